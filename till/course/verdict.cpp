// The endings, one row each.
#include "till/course/verdict.h"

#include <algorithm>
#include <array>

namespace zentaro::till {

namespace {

struct Row {
  Ending ending;
  std::string_view name;
  State state;
};

constexpr std::array<Row, 13> rows{{{Ending::Printed, "printed", State::Printed},
                                    {Ending::PrintedInPart, "printed-in-part", State::Printed},
                                    {Ending::NotPrinted, "not-printed", State::NotPrinted},
                                    {Ending::Unknown, "unknown", State::Unknown},
                                    {Ending::StillOpen, "still-open", State::Unknown},
                                    {Ending::StillToBeClosed, "still-to-be-closed", State::Unknown},
                                    {Ending::OpenBefore, "open-before", State::NotPrinted},
                                    {Ending::Unreachable, "unreachable", State::NotPrinted},
                                    {Ending::AlreadyPrinted, "already-printed", State::Printed},
                                    {Ending::PrintedBefore, "printed-before", State::Printed},
                                    {Ending::UnknownBefore, "unknown", State::Unknown},
                                    {Ending::OtherContent, "other-content", State::NotPrinted},
                                    {Ending::Busy, "busy", State::NotPrinted}}};

const Row& rowOf(Ending ending) { return *std::ranges::find(rows, ending, &Row::ending); }

}  // namespace

std::string_view nameOf(Ending ending) { return rowOf(ending).name; }

bool isPrinted(Ending ending) { return ending == Ending::Printed || ending == Ending::PrintedInPart; }

State stateOf(Ending ending) { return rowOf(ending).state; }

}  // namespace zentaro::till
