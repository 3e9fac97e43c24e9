// Control lines and log lines.
#include "virtual-printer/shell/control.h"

#include "bench.h"
#include "virtual-printer/shell/log.h"

namespace virtual_printer::control_test {

TEST(Control, RepliesToEveryLine) {
  bench::Till till;
  till.say("40 ||||||||");
  const struct {
    const char* line;
    const char* reply;  // its end
  } rows[] = {
      {"faults", "ok"},
      {"fault lose-answer on close", "ok"},
      {"fault paper-out; pieces=1\r", "ok"},
      {"faults", "lose-answer on close once\npaper-out always\npieces=1 once\nok"},
      {"clear paper-out", "ok 1 cleared"},
      {"clear paper-out", "ok 0 cleared"},
      {"clear paper", "error: there is no effect \"paper\""},
      {"fault explode", "there is no effect \"explode\"; --help lists them"},
      {"clear", "ok all faults cleared"},
      {"faults", "ok"},
      {"status", "ok document=1 printer=0000 fiscal=0001 invoice=1 credit-note=0 non-fiscal=0 z=0"},
      {"", "error: \"\" is no command; help lists them"},
      {"Quit", "error: \"Quit\" is no command; help lists them"},
      {"help", "ok"},
  };
  for (const auto& row : rows) {
    const ControlReply reply = control(row.line, till.faults, till.device.works());
    EXPECT_TRUE(reply.text.ends_with(row.reply)) << row.line << ": " << reply.text;
    EXPECT_EQ(reply.order, ControlReply::Order::None);
  }
  EXPECT_EQ(control("quit", till.faults, till.device.works()).order, ControlReply::Order::Quit);
}

TEST(Control, LinesAreCutWhereverTheBytesAre) {
  LineReader reader;
  EXPECT_TRUE(reader.feed("fau").empty());
  EXPECT_EQ(reader.feed("lts\nclear\nhe"), (std::vector<std::string>{"faults", "clear"}));
  EXPECT_EQ(reader.feed("lp\n"), std::vector<std::string>{"help"});
  for (int block = 0; block < 100; ++block) reader.feed(std::string(1000, 'x'));
  EXPECT_LE(reader.feed("\n").at(0).size(), 4096U) << "a line without end does not fill the memory";
}

TEST(Log, OneJsonObjectALine) {
  const Moment moment{std::chrono::milliseconds{1234}, bench::afternoon};
  const struct {
    Event event;
    const char* line;
  } rows[] = {
      {{EventKind::Command, "item", {}, 34, 0x42, {"Caf\xE9", ""}},
       R"({"time":"2026-11-24T15:04:00","ms":1234,"event":"command","name":"item","sequence":34,"code":"42","fields":["Café",""]})"},
      {{EventKind::Answer, "item", {}, 34, 0x42, {"2900"}, 0x0010, 0x8001},
       R"({"time":"2026-11-24T15:04:00","ms":1234,"event":"answer","name":"item","sequence":34,"code":"42","printerStatus":"0010","fiscalStatus":"8001","fields":["2900"]})"},
      {{EventKind::Noise, "", "\x02\xFF"},
       R"({"time":"2026-11-24T15:04:00","ms":1234,"event":"noise","bytes":"02 FF"})"},
      {{EventKind::Reset}, R"({"time":"2026-11-24T15:04:00","ms":1234,"event":"reset"})"},
      {{EventKind::Fault, "delay=1 once"},
       R"({"time":"2026-11-24T15:04:00","ms":1234,"event":"fault","name":"delay=1 once"})"},
      {{EventKind::Power, "off"}, R"({"time":"2026-11-24T15:04:00","ms":1234,"event":"power","name":"off"})"},
      {{EventKind::Unsaved, "no \xFF"},
       "{\"time\":\"2026-11-24T15:04:00\",\"ms\":1234,\"event\":\"unsaved\",\"reason\":\"no \uFFFD\"}"},
  };
  for (const auto& row : rows) EXPECT_EQ(logLine(moment, row.event), std::string{row.line} + "\n");
}

}  // namespace virtual_printer::control_test
