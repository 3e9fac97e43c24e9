// The exchange of a frame for an answer: chunks, deadlines, the order of the checks, and what each
// outcome leaves behind.
#include <gtest/gtest.h>

#include "support/printer_fixture.h"
#include "util/lm_strtok.h"

namespace zentaro::testing::transaction_test {

// The answer to the first frame (0x48, sequence 0x22) of a new object; its bytes add up to 0x0238.
const std::string golden = "<STX>\"H<FS>0600<FS>3080<ETX>0238";

class TransactionTest : public PrinterTest {
 protected:
  // What the last exchange left, in one line.
  std::string left() const {
    const Variant all = z->getResponse(0);
    std::string text = std::to_string(z->nEnvironmentError) + " " + std::to_string(z->dwordPrinterStatus) +
                       " " + std::to_string(z->dwordStatusFiscal) + " " + utf8(z->sLastError) + " [";
    for (const Variant& item : all.array().items()) text += " " + shownValue(item);
    return text + " ]";
  }
  std::string afterAnswer(const std::vector<Chunk>& chunks) {
    CZentaro& printer = renew();
    lmstrtok(u"stale token", u" ");  // a text that the host has begun to split
    line.answer(chunks);
    EXPECT_EQ(printer.ExecuteCMD(72), printer.nEnvironmentError);
    return left();
  }
};

const std::string good = "0 1536 12416 VOID [ (number) 0600 3080 0238 ]";
const std::string failed = " 32768 32768 ";

TEST_F(TransactionTest, AnAnswerIsTheSameInWhateverPiecesItComes) {
  const std::string whole = bytes(golden);
  EXPECT_EQ(afterAnswer({{golden}}), good);
  EXPECT_EQ(line.written.back(), bytes("<STX>\"H<ETX>006F"));
  for (std::size_t cut = 1; cut < whole.size(); ++cut) {
    EXPECT_EQ(afterAnswer({{whole.substr(0, cut)}, {whole.substr(cut), 1}}), good) << "cut at " << cut;
  }
  std::vector<Chunk> single;
  for (const char byte : whole)
    single.push_back({std::string(1, byte), 1.0 * static_cast<double>(single.size())});
  EXPECT_EQ(afterAnswer(single), good);
  EXPECT_EQ(afterAnswer({{"x<ETX>abc"}, {golden, 1}}), good) << "noise with an ETX in front";
  for (std::size_t cut = 1; cut < whole.size(); ++cut) {
    EXPECT_EQ(afterAnswer({{"x<ETX>abc"}, {whole.substr(0, cut), 1}, {whole.substr(cut), 2}}), good) << cut;
    EXPECT_EQ(afterAnswer({{"x<ETX>abc" + whole.substr(0, cut)}, {whole.substr(cut), 1}}), good) << cut;
  }
  EXPECT_EQ(afterAnswer({{"<STX>\"H<FS>0600<FS>3080<FS>a"}, {"<WAIT>b<ETX>0000"}}),
            "0 1536 12416 VOID [ (number) 0600 3080 a\fb 0000 ]")
      << "only in front a wait byte is none of the answer";
  EXPECT_EQ(afterAnswer({{"<STX>\"H<FS>0600<FS>3080<ETX>02"}, {"38<ETX>zz"}}),
            "0 1536 12416 VOID [ (number) 0600 3080 0238 zz ]")
      << "four characters behind the first ETX are enough";
}

TEST_F(TransactionTest, AnAnswerCutAnywhereIsATimeOutAndTheNextOneWorks) {
  const std::string whole = bytes(golden);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    std::vector<Chunk> chunks;
    if (length > 0) chunks.push_back({whole.substr(0, length)});
    EXPECT_EQ(afterAnswer(chunks), "1" + failed + " [ (empty) ]") << length << " bytes";
    line.answer({{ok('#', 'J')}});
    EXPECT_EQ(z->ExecuteCMD(74), 0) << length << " bytes";
  }
}

TEST_F(TransactionTest, AnswersAreJudged) {
  struct Row {
    const char* name;
    const char* answer;
    std::string expected;
  };
  const Row rows[] = {
      {"wait bytes in front", "<WAIT><WAIT><STX>\"H<FS>0600<FS>3080<ETX>0238", good},
      {"junk in front", "ab<7F><STX>\"H<FS>0600<FS>3080<ETX>0238", good},
      {"no STX at all", "abcd<ETX>0000", "2" + failed + " [ (empty) ]"},
      {"another sequence, error text already taken", "<STX>!H<FS>0600<FS>3080<FS>ERROR 03 X<FS>y<ETX>0000",
       "4" + failed + "ERROR 03 X [ (empty) ]"},
      {"an error text up to the ETX", "<STX>\"H<FS>0600<FS>3080<FS>xERROR 1<ETX>0000",
       "0 1536 12416 ERROR 1 [ (number) 0600 3080 xERROR 1 0000 ]"},
      {"lower case is no error text", "<STX>\"H<FS>0600<FS>3080<FS>error<ETX>0000",
       "0 1536 12416 VOID [ (number) 0600 3080 error 0000 ]"},
      {"printer bit 15", "<STX>\"H<FS>8000<FS>0000<FS>a<ETX>0000",
       "5 32768 0 VOID [ (number) 8000 0000 a 0000 ]"},
      {"fiscal bit 15", "<STX>\"H<FS>0000<FS>C080<FS>a<ETX>0000",
       "5 0 49280 VOID [ (number) 0000 C080 a 0000 ]"},
      {"an empty field moves the later ones down", "<STX>\"H<FS>0600<FS>3080<FS><FS>b<ETX>0000",
       "0 1536 12416 VOID [ (number) 0600 3080 b 0000 ]"},
      {"more behind the checksum in the same read", "<STX>\"H<FS>0600<FS>3080<ETX>0238xyz",
       "0 1536 12416 VOID [ (number) 0600 3080 0238xyz ]"},
      {"status texts without a number", "<STX>\"H<FS>zz<FS>3g<ETX>0000",
       "0 0 3 VOID [ (number) zz 3g 0000 ]"},
      {"one status word only: the checksum is read as the other", "<STX>\"H<FS>0600<ETX>0012",
       "0 1536 18 VOID [ (number) 0600 0012 ]"},
      {"one token only", "<STX>\"H<ETX>006F", "0 111 0 VOID [ (number) 006F  ]"},
      {"no token at all", "<STX>\"H<ETX><ETX><ETX><ETX><ETX>", "0 0 0 VOID [ (number)   ]"},
      {"an STX as the very last character", "ab<ETX>0000<STX>", "1" + failed + " [ (empty) ]"},
      {"ERROR behind the ETX is none", "<STX>\"H<FS>0600<FS>3080<ETX>ERROR",
       "0 1536 12416 VOID [ (number) 0600 3080 ERROR ]"},
      {"whatever stands behind the command goes", "<STX>\"Hx0600<FS>3080<ETX>0000",
       "0 1536 12416 VOID [ (number) 0600 3080 0000 ]"},
      {"an ETX in the junk does not end the wait", "x<ETX>ab<STX>\"", "1" + failed + " [ (empty) ]"},
      {"status words of five digits", "<STX>\"H<FS>10600<FS>18000<ETX>0000",
       "5 1536 32768 VOID [ (number) 10600 18000 0000 ]"},
      {"wrong checksum digits, nobody looks", "<STX>\"H<FS>0600<FS>3080<ETX>FFFF",
       "0 1536 12416 VOID [ (number) 0600 3080 FFFF ]"},
  };
  for (const Row& row : rows) EXPECT_EQ(afterAnswer({{row.answer}}), row.expected) << row.name;
}

TEST_F(TransactionTest, TheChecksumIsVerifiedWhenAskedFor) {
  struct Row {
    const char* name;
    std::string answer;
    int outcome;
    const char16_t* error = u"VOID";
  };
  const Row rows[] = {
      {"right", golden, 0},
      {"a fifth digit is none of it", golden + "A", 0},
      {"bytes that are other characters than their number", "<STX>\"H<FS>0600<FS>3080<FS><80><9F><ETX>0373",
       0},
      {"wrong", "<STX>\"H<FS>0600<FS>3080<ETX>0239", 3},
      {"wrong, its error text is taken", "<STX>\"H<FS>0600<FS>3080<FS>ERROR 03 X<ETX>0239", 3, u"ERROR 03 X"},
      {"wrong comes before another sequence", "<STX>!H<FS>0600<FS>3080<ETX>0000", 3},
      {"8000 and above are unsigned: 270 times z",
       "<STX>\"H<FS>0600<FS>3080<FS>" + std::string(270, 'z') + "<ETX>8300", 0},
      {"compared modulo 65,536: 600 times z",
       "<STX>\"H<FS>0600<FS>3080<FS>" + std::string(600, 'z') + "<ETX>2044", 0},
  };
  for (const Row& row : rows) {
    renew().verifyCheckSum = true;
    line.answer({{row.answer}});
    EXPECT_EQ(z->ExecuteCMD(72), row.outcome) << row.name;
    EXPECT_EQ(z->sLastError, row.error) << row.name;
  }
}

TEST_F(TransactionTest, SilenceEndsTheExchange) {
  struct Row {
    const char* name;
    const char16_t* timeOut;
    std::vector<Chunk> chunks;
    int outcome;
    double until;  // seconds from the write to the end
  };
  // The clock starts at 36000.25; deadlines are whole seconds, ties to even.
  const std::vector<Row> rows = {
      {"silence, default", u"no number", {}, 1, 11.75},
      {"a fraction is rounded", u"2.6", {}, 1, 2.75},
      {"beyond 16 bits is the default", u"40000", {}, 1, 11.75},
      {"zero ends within half a second", u"0", {}, 1, 0},
      {"wait bytes move the deadline", u"5", {{"<WAIT>", 4}, {"<WAIT><WAIT>", 8}, {golden, 12}}, 0, 12},
      {"the last byte ends it at once", u"5", {{golden.substr(0, 12)}, {golden.substr(12), 3}}, 0, 3},
      {"the chunks of the checksum do not move it",
       u"5",
       {{"<STX>\"H<FS>0600<FS>3080<ETX>"}, {"0", 4}, {"2", 4.5}, {"38", 5.5}},
       1,
       4.75},
      {"nor does one that comes soon behind the ETX",
       u"2",
       {{"<STX>\"H<FS>0600<FS>3080<ETX>", 0.2}, {"0", 0.4}, {"238", 2.2}},
       1,
       1.75},
      {"a chunk of the answer moves it, also the one with the ETX",
       u"2",
       {{"<STX>", 0.4}, {"\"H<FS>0600<FS>3080<ETX>", 1.4}, {"0238", 3.4}},
       0,
       3.4},
  };
  for (const Row& row : rows) {
    setting("TimeOutZT", row.timeOut);
    for (const double start : {36000.25, 86395.25}) {  // the other one goes beyond midnight
      platform.clock.now = start;
      line.fallSilent();
      renew();
      line.answer(row.chunks);
      EXPECT_EQ(z->ExecuteCMD(72), row.outcome) << row.name << " at " << start;
      EXPECT_NEAR(platform.clock.now - start, row.until, 0.002) << row.name << " at " << start;
    }
  }
  // The setting is read until it is other than 0; half a second is rounded to the even second.
  renew();
  for (const auto& [setTo, until] : {std::pair{u"0", 0.0}, {u"2", 1.5}, {u"5", 1.5}}) {
    setting("TimeOutZT", setTo);
    platform.clock.now = 36000.5;
    EXPECT_EQ(z->ExecuteCMD(72), 1);
    EXPECT_DOUBLE_EQ(platform.clock.now - 36000.5, until) << utf8(setTo);
  }
}

TEST_F(TransactionTest, TheFirstChunkBehindTheUsefulOneMovesTheDeadlineAlsoWithTheEtxThere) {
  setting("TimeOutZT", u"5");
  platform.clock.now = 36000.25;
  renew();
  // The host takes three seconds between the first two reads, so "0" is there at the second.
  int yields = 0;
  platform.host.onYield = [&] {
    if (++yields == 13) platform.clock.now += 3;
  };
  line.answer({{"<STX>\"H<FS>0600<FS>3080<ETX>"}, {"0", 2}, {"238", 7}});
  EXPECT_EQ(z->ExecuteCMD(72), 0);
}

TEST_F(TransactionTest, TheHostRunsWhileTheObjectWaitsAndMayEndIt) {
  int yields = 0, cleared = 0;
  platform.host.onYield = [&] {
    ++yields;
    cleared += z->dwordPrinterStatus + z->dwordStatusFiscal + z->nEnvironmentError == 0 ? 1 : 0;
  };
  z->dwordPrinterStatus = z->dwordStatusFiscal = 0x8000;
  z->nEnvironmentError = ENVERR_STATUS;
  EXPECT_EQ(z->ExecuteCMD(72), 1);
  EXPECT_GT(cleared, 1000) << "what the exchange before left is gone while this one waits";
  EXPECT_GE(yields, 1100);  // 12 s of silence, at least 100 a second
  yields = 0;
  z->CommPort = 9;  // a port that there is not
  EXPECT_EQ(z->ExecuteCMD(72), 1);
  EXPECT_GE(yields, 1100);
  z->CommPort = 1;
  platform.host.onYield = [&] {
    z->BuildOMB(72, {});
    platform.host.onYield = [] {};
  };
  line.answer({{ok('%', 'H')}});
  EXPECT_EQ(z->ExecuteCMD(72), 0) << "the answer carries the number of the last frame built, the host's";
  struct Stop {};
  platform.host.onYield = [] { throw Stop(); };
  EXPECT_THROW(z->ExecuteCMD(72), Stop);
  platform.host.onYield = nullptr;
  line.answer({{ok('\'', 'H')}});
  EXPECT_EQ(z->ExecuteCMD(72), 0);
}

TEST_F(TransactionTest, AClosedPortIsSeenBeforeAnythingElse) {
  line.answer({{golden}});
  z->ExecuteCMD(72);
  const std::string before = left();
  z->PortOpen(false);
  line.written.clear();
  EXPECT_EQ(z->ExecuteCMD(u"no number"), -1);
  EXPECT_EQ(z->ExecuteOMB(Variant::null()), -1);
  EXPECT_EQ(left(), before);
  // execute does not look: its frame goes nowhere, and no answer comes.
  EXPECT_EQ(z->execute(u"frame"), 1);
  EXPECT_EQ(z->nLastCommand, 72) << "that of the last frame built";
  EXPECT_TRUE(line.written.empty());
  EXPECT_EQ(left(), "1" + failed + "VOID [ (empty) ]");
}

TEST_F(TransactionTest, AFrameOfBuildOMBIsSentAsItIs) {
  line.answer({{golden}});
  EXPECT_EQ(z->ExecuteOMB(z->BuildOMB(72, {})), 0);
  EXPECT_EQ(line.written.back(), bytes("<STX>\"H<ETX>006F"));
  EXPECT_EQ(errorOf([&] { z->ExecuteOMB(Variant::null()); }), 94);
  EXPECT_EQ(errorOf([&] { z->ExecuteCMD(u"x"); }), 13);
  z->CommPort = u"COM1";
  EXPECT_EQ(errorOf([&] { z->ExecuteCMD(72); }), 13);
  z->CommPort = 1;
  EXPECT_EQ(line.written.size(), 1U);
  z->CommPort = 1;  // what was opened can be closed again
}

}  // namespace zentaro::testing::transaction_test
