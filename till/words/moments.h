// Moments of the books as text.
#pragma once

#include <string>

#include "till/books/job.h"

namespace zentaro::till {

/// "14:05" here, with the day in front unless it is today.
std::string momentText(Moment at);
/// "2024-03-15 14:05" here.
std::string dayAndTime(Moment at);
/// "2024-03-15T18:05:00Z".
std::string isoMoment(Moment at);

}  // namespace zentaro::till
