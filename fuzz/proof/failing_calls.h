// System calls that fail on order. The program is linked so that the library's calls come here first.
#pragma once

#include <array>
#include <cstddef>
#include <span>

namespace proof {

enum class Call {
  Open,
  Close,
  Read,   // of the line
  Write,  // to the line
  ReadFile,
  WriteFile,
  Ioctl,
  Poll,
  Flock,
  Fstat,
  Tcflush,
  Tcgetattr,
  Tcsetattr,
  Nanosleep
};
inline constexpr std::size_t callCount = 14;

struct Failure {
  const char* name;
  int error;  // errno; 0 for one of the effects below
  enum class Effect { Error, Short, Nothing, HangUp, Ignored } effect = Effect::Error;
  bool canLast = false;  // also tried as a failure that stays
};

struct CallRow {
  Call call;
  const char* name;
  std::span<const Failure> failures;
};
std::span<const CallRow> callTable();

using CallCounts = std::array<int, callCount>;

/// From now on calls are counted, and none fails.
void countCalls();
/// The number-th call of that kind (from 0) fails, `lasting` ones after it too.
void orderFailure(Call call, int number, const Failure& failure, bool lasting);
/// No more failures; how often each call was made since.
CallCounts stopFailures();
/// Whether the ordered failure has struck.
bool hasStruck();

}  // namespace proof
