// The transitions on the way back.
#include "till/line/recovery.h"

#include <algorithm>

namespace zentaro::till {

void Recovery::asked(Heard heard, Time now) {
  heard_ = heard;
  const bool isAnswered = heard == Heard::InStep || heard == Heard::Echo || heard == Heard::OtherMachine;
  if (isAnswered)
    act_ = Act::Stop;
  else
    pauseOrGiveUp(now);
}

void Recovery::listened() {
  hasListened_ = true;
  act_ = Act::Reopen;
}

void Recovery::reopened(bool isOpen, Time now) {
  if (isOpen)
    act_ = Act::Ask;
  else
    pauseOrGiveUp(now);
}

void Recovery::pauseOrGiveUp(Time now) {
  constexpr Time longestSilence{4000};
  act_ = waited(now) < limit_ ? Act::Listen : Act::Stop;
  if (hasListened_) silence_ = std::min(silence_ * 2, longestSilence);
}

}  // namespace zentaro::till
