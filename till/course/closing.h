// The closing of a day, and the reading of one. A Z whose answer is lost is judged by the number of the last Z, because
// a second one would close an empty day and cannot be taken back.
#pragma once

#include <memory>
#include <optional>

#include "reports/resultado_cierre.h"
#include "till/course/station.h"
#include "till/course/verdict.h"

namespace zentaro::till {

struct ClosingVerdict {
  Kind kind = Kind::Z;
  Ending ending = Ending::Unknown;
  Cause cause = {};
  std::optional<std::int64_t> number = {};      // of a Z that was printed
  std::optional<ResultadoCierre> figures = {};  // of one whose answer came
  int openDocument = 0;         // the printer's number of the kind of document that keeps it from closing
  std::optional<Job> job = {};  // of the books: this one, or the one that is in its way
};

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
