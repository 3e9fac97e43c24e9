// The grammar of fault plans, and when faults begin and end.
#include "virtual-printer/faults/plan.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "virtual-printer/faults/fault_set.h"

namespace virtual_printer::plan_test {

TEST(FaultPlan, EveryWordOfTheGrammarIsUnderstood) {
  const struct {
    const char* plan;
    const char* described;  // with everything spelled out
  } rows[] = {
      {"lose-answer", "lose-answer once"},
      {"  lose-answer \t on close ", "lose-answer on close once"},
      {"lose-answer on 45,item", "lose-answer on close,item once"},
      {"lose-command on a0", "lose-command on slip-on once"},
      {"delay", "delay=5 once"},
      {"delay=11.5 on payment after 2 times 3", "delay=11.5 on payment after 2 times 3"},
      {"delay=1.001", "delay=1.001 once"},
      {"wait=3600 always", "wait=3600 always"},
      {"noise", "noise=before once"},
      {"noise=inside chance 5% always", "noise=inside chance 5% always"},
      {"noise chance 5", "noise=before chance 5% once"},
      {"pieces=3", "pieces=3 once"},
      {"paper-out", "paper-out always"},
      {"paper-out once", "paper-out once"},
      {"power-cut=0 on item after 1", "power-cut=0 on item after 1 once"},
  };
  for (const auto& row : rows) {
    const std::vector<Fault> plan = parsePlan(row.plan);
    ASSERT_EQ(plan.size(), 1U) << row.plan;
    EXPECT_EQ(describe(plan[0]), row.described);
    EXPECT_EQ(parsePlan(describe(plan[0])), plan) << "the description is a plan itself";
  }
  EXPECT_EQ(parsePlan("delay=1; paper-out on item;hang-up").size(), 3U);
  for (const EffectEntry& entry : effectTable()) {
    EXPECT_EQ(&entryOf(entry.effect), &entry) << entry.name << " stands in its place";
    EXPECT_EQ(parsePlan(entry.name)[0].effect, entry.effect);
  }
}

TEST(FaultPlan, EveryMistakeIsNamed) {
  const struct {
    const char* plan;
    const char* complaint;
  } rows[] = {
      {"", "an effect is expected"},
      {"delay=1;", "an effect is expected"},
      {"explode", "there is no effect \"explode\""},
      {"lose-answer=3", "\"lose-answer\" takes no value"},
      {"delay=soon", "\"soon\" is no number of seconds"},
      {"delay=-1", "\"-1\" is no number of seconds"},
      {"delay=3601", "\"3601\" is no number of seconds"},
      {"delay=nan", "\"nan\" is no number of seconds"},
      {"delay=", "\"\" is no number of seconds"},
      {"delay=1=2", "one value is expected"},
      {"pieces=0", "\"0\" is no whole number from 1"},
      {"pieces=1.5", "\"1.5\" is no whole number"},
      {"noise=after", "\"after\" is neither before nor inside"},
      {"delay on", "after \"on\" a command is expected"},
      {"delay on sale", "there is no command \"sale\""},
      {"delay on 99", "there is no command \"99\""},
      {"delay on item,", "there is no command \"\""},
      {"delay after", "after \"after\" a number is expected"},
      {"delay after -1", "\"-1\" is no whole number"},
      {"delay times 0", "\"0\" is no whole number from 1"},
      {"delay times 99999999999", "is no whole number"},
      {"delay chance 0%", "\"0\" is no whole number from 1 to 100"},
      {"delay chance 101%", "\"101\" is no whole number"},
      {"delay 5", "\"5\" is none of: on, after"},
      {"delay=1; wait twice", "\" wait twice\": \"twice\" is none of"},
  };
  for (const auto& row : rows) {
    try {
      parsePlan(row.plan);
      ADD_FAILURE() << row.plan << ": accepted";
    } catch (const std::runtime_error& error) {
      EXPECT_NE(std::string{error.what()}.find(row.complaint), std::string::npos)
          << row.plan << ": " << error.what();
    }
  }
}

// Frames as letters (i item, p payment, s status); a letter stays where the fault strikes, else a point.
TEST(FaultSet, StrikesWhenItsConditionIsMet) {
  const struct {
    const char* plan;
    const char* frames;
    const char* struck;
  } rows[] = {
      {"lose-answer", "iiii", "i..."},
      {"lose-answer on payment", "iipip", "..p.."},
      {"lose-answer on item,payment always", "isips", "i.ip."},
      {"lose-answer on item after 2", "ipiiii", "...i.."},
      {"lose-answer after 2 times 2", "ipsip", "..si."},
      {"paper-out", "isp", "isp"},
      {"paper-out on payment", "iipsi", "..psi"},
      {"paper-out on item after 1 times 2", "iipss", ".ip.."},
      {"paper-out once", "iip", "i.."},
  };
  for (const auto& row : rows) {
    FaultSet faults;
    faults.add(parsePlan(row.plan));
    std::string struck;
    for (const char frame : std::string{row.frames}) {
      const std::uint8_t code = frame == 'i' ? 0x42 : frame == 'p' ? 0x44 : 0x38;
      struck += faults.strike(code, true).empty() ? '.' : frame;
    }
    EXPECT_EQ(struck, row.struck) << row.plan;
  }
}

TEST(FaultSet, ChancesAreSeededAndAboutRight) {
  const auto pattern = [](unsigned seed, const std::string& chance = "25%", int frames = 1000) {
    FaultSet faults{seed};
    faults.add(parsePlan("noise chance " + chance + " always"));
    std::string struck;
    for (int frame = 0; frame < frames; ++frame) struck += faults.strike(0x42, true).empty() ? '.' : 'x';
    return struck;
  };
  EXPECT_EQ(pattern(7), pattern(7));
  EXPECT_NE(pattern(7), pattern(8));
  const auto count = [&](const char* chance) {
    const std::string struck = pattern(7, chance, 20'000);
    return std::count(struck.begin(), struck.end(), 'x');
  };
  EXPECT_NEAR(static_cast<double>(count("25%")), 5000, 300);
  EXPECT_NEAR(static_cast<double>(count("1%")), 200, 70) << "not every fiftieth";
  EXPECT_EQ(count("100%"), 20'000);
}

TEST(FaultSet, RepeatsOnlyWhenThereIsSomethingToRepeat) {
  FaultSet faults;
  faults.add(parsePlan("repeat-answer"));
  EXPECT_TRUE(faults.strike(0x42, false).empty());
  EXPECT_EQ(faults.strike(0x42, true).size(), 1U) << "the fault has waited for its chance";
}

}  // namespace virtual_printer::plan_test
