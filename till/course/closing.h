// The closing of a day, and the reading of one. A Z whose answer is lost is judged by the number of the last Z, because
// a second one would close an empty day and cannot be taken back.
#pragma once

#include <memory>
#include <optional>

#include "till/course/closing_verdict.h"
#include "till/course/station.h"

namespace zentaro::till {

class ClosingCourse {
 public:
  /// Kind::X or Kind::Z.
  ClosingCourse(Kind kind, const CloseOptions& options) : kind_(kind), options_(options) {}

  /// As of SaleCourse.
  std::optional<ClosingVerdict> beforePort(const std::string& device);
  ClosingVerdict print(CZentaro& printer, PrinterLine& line);
  void told();

 private:
  bool openBooks();
  std::optional<ClosingVerdict> refused();
  ClosingVerdict verdict(Ending ending, Cause cause = {}) const;
  Order order() const;

  Kind kind_;
  CloseOptions options_;
  Cause booksCause_;
  std::unique_ptr<Station> station_;
  std::optional<Keeper> keeper_;
};

}  // namespace zentaro::till
