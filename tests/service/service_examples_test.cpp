// The examples for web shops.
#include "service/service_fixture.h"

namespace zentaro::service::service_test {

// As their readers run them, with a lost answer, and a second time as after a crash; then all at once on a printer
// that takes its time.
TEST_F(Service, TheExamplesSellOnceInEachLanguage) {
  printer("caja1");
  printer("slow", {}, {"--realtime"});
  serve();
  const std::string compiled = file("Sell.exe"), inExamples = "cd " ZENTARO_SOURCES "/examples/web; ";
  run(inExamples + "mcs -r:System.Net.Http -r:System.Runtime.Serialization -out:" + compiled + " Sell.cs");
  const std::string at = " http://127.0.0.1:" + std::to_string(port);
  std::string missing, together = inExamples;
  int languages = 0;
  for (const std::string& words :
       {std::string("python3 sell.py"), std::string("node sell.mjs"), std::string("php sell.php"),
        std::string("bash sell.sh"), "mono " + compiled}) {
    const std::string interpreter = words.substr(0, words.find(' '));
    const bool isThere = interpreter == "mono" ? run("test -e " + compiled).status == 0
                                               : run("command -v " + interpreter).status == 0;
    if (!isThere) {
      missing += " " + interpreter;
      continue;
    }
    fault("caja1", "lose-answer on close");
    const std::string sells = "ZENTARO_TOKEN=" + token + " " + words + at;
    const testing::Ran first = run(inExamples + sells + " caja1 F-" + interpreter),
                       again = run(inExamples + sells + " caja1 F-" + interpreter);
    EXPECT_EQ(first.output.substr(0, 8), "printed ") << words << first.output;
    EXPECT_EQ(again.output, first.output) << words;
    together += sells + " slow S-" + interpreter + " & ";
    ++languages;
  }
  const std::string all = run(together + "wait").output;
  for (int number = 1; number <= languages; ++number)
    EXPECT_NE(all.find("printed " + std::to_string(number) + ", total 23.20"), std::string::npos) << all;
  if (!missing.empty()) GTEST_SKIP() << "the rest; not installed:" << missing;
}

}  // namespace zentaro::service::service_test
