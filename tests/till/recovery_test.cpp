// The way back into step, over a line and a clock that the row tells.
#include "till/line/recovery.h"

#include <gtest/gtest.h>

#include "till/line/answer_check.h"

namespace zentaro::till::recovery_test {

using Act = Recovery::Act;
using Time = Recovery::Time;

char letter(Act act) { return "ALRS"[static_cast<std::size_t>(act)]; }

// Each event is what came of the act before it: i in step, n nothing, o out of step, e echo; s silence; + open, - not
// open. Every request takes a second, every silence what it has to.
std::string acts(Act first, Time limit, std::string_view events) {
  Time now{1000};
  Recovery recovery(first, limit, now);
  std::string acts(1, letter(recovery.next()));
  for (const char event : events) {
    if (event == 's') {
      now += recovery.silence();
      recovery.listened();
    } else if (event == '+' || event == '-') {
      recovery.reopened(event == '+', now);
    } else {
      now += Time(1000);
      recovery.asked(static_cast<Heard>(std::string_view("inoe").find(event)), now);
    }
    acts += letter(recovery.next());
  }
  return acts;
}

TEST(Recovery, ListensReopensAndAsksUntilItIsInStepOrGivesUp) {
  struct {
    const char* name;
    Act first;
    int limit;
    const char* events;
    const char* acts;
  } const rows[] = {
      {"in step at once", Act::Ask, 30000, "i", "AS"},
      {"an answer was lost before", Act::Listen, 30000, "s+i", "LRAS"},
      {"late answers", Act::Ask, 30000, "ns+os+i", "ALRALRAS"},
      {"the device is away for a while", Act::Listen, 30000, "s-s-s+i", "LRLRLRAS"},
      {"a line that returns what is sent", Act::Ask, 30000, "e", "AS"},
      {"no patience", Act::Ask, 0, "n", "AS"},
      {"silence, 1 + 0.3 + 1 + 0.6 + 1 s of 3", Act::Ask, 3000, "ns+ns+n", "ALRALRAS"},
      {"one attempt even when the listening took all the time", Act::Listen, 200, "s+n", "LRAS"},
      {"the device stays away, 0.3 + 0.6 + 1.2 s of 2", Act::Listen, 2000, "s-s-s-", "LRLRLRS"},
  };
  for (const auto& row : rows) EXPECT_EQ(acts(row.first, Time(row.limit), row.events), row.acts) << row.name;
}

TEST(Recovery, TellsAStatusFromAnEcho) {
  struct {
    const char* name;
    ENVERR_CODES outcome;
    std::vector<Variant> fields;
    Heard heard;
  } const rows[] = {
      {"a status", ENVERR_OK, {std::int16_t{0x38}, u"0600", u"3080", u"00", u"0239"}, Heard::InStep},
      {"a refusal", ENVERR_STATUS, {std::int16_t{0x38}, u"0000", u"8000", u"0239"}, Heard::InStep},
      {"the request", ENVERR_OK, {std::int16_t{0x38}, u"N", u"00C3"}, Heard::Echo},
      {"words that are none", ENVERR_OK, {std::int16_t{0x38}, u"N", u"*", u"00", u"0239"}, Heard::Echo},
      {"nothing behind the words", ENVERR_OK, {std::int16_t{0x38}, u"0600", u"3080", u"0239"}, Heard::Echo},
      {"another command",
       ENVERR_OK,
       {std::int16_t{0x41}, u"0600", u"3080", u"00", u"0239"},
       Heard::OutOfStep},
      {"no answer", ENVERR_COMM, {Variant()}, Heard::Nothing},
      {"another number", ENVERR_BADSEQ, {Variant()}, Heard::OutOfStep},
  };
  for (const auto& row : rows)
    EXPECT_EQ(heardOfStatus(row.outcome, Array(row.fields)), row.heard) << row.name;
}

}  // namespace zentaro::till::recovery_test
