// One machine while something is printed on it: claimed, so that nobody else prints there; in step; known by its serial
// number; and its open questions answered.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "till/books/admission.h"
#include "till/books/claims.h"
#include "till/course/options.h"
#include "till/course/print_sale.h"
#include "till/line/printer_line.h"

namespace zentaro::till {

class Station {
 public:
  /// Opens the books. Raises BooksError when they are needed and cannot be used; else the observer is told.
  Station(const Options& options, BooksNeed need);

  /// Null when none are kept.
  Books* books() { return books_; }
  Observer& observer() { return observer_; }
  IsBusy isBusy() const;

  /// Before the port is opened: false when somebody else prints on the device and goes on doing so.
  bool claimDevice(const std::string& device);

  /// Gets line and printer in step, claims the machine, and judges what was cut short there. Anything but nothing is
  /// the reason not to print: Unreachable or Busy. Another program's sale is waited for with the port closed.
  std::optional<Ending> arrive(CZentaro& printer, PrinterLine& line, Cause& cause);

  // After arrive().
  const std::string& machine() const { return machine_; }
  const std::string& device() const { return device_; }
  const std::optional<std::int64_t>& lastZ() const { return lastZ_; }
  /// The machine for a document of that kind.
  ObjectSalePrinter printerFor(Kind kind, CZentaro& printer, PrinterLine& line) const;
  const std::vector<Job>& judged() const { return judged_; }
  /// A document is open that may be of a job which was cut short, or not: somebody has to look at it.
  bool seesOthersDocument() const { return seesOthersDocument_; }

 private:
  std::optional<Ending> meet(CZentaro& printer, PrinterLine& line, Cause& cause);
  bool waitsOn();
  bool comeBack(CZentaro& printer);
  void judgeOthers(CZentaro& printer, PrinterLine& line);

  Observer nobody_;
  Observer& observer_;
  Options options_;
  std::optional<Books> own_;
  Books* books_ = nullptr;
  std::optional<Claims> claims_;
  std::optional<Claim> deviceClaim_, machineClaim_;
  std::chrono::steady_clock::time_point end_;
  bool toldWait_ = false, seesOthersDocument_ = false;
  std::string device_, machine_;
  std::optional<std::int64_t> lastZ_;
  std::vector<Job> judged_;
};

}  // namespace zentaro::till
