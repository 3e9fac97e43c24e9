// A printer of a till, as the centre's resources know it: the centre carries its jobs.
#pragma once

#include "service/chain/centre.h"

namespace zentaro::service {

class TillWorker final : public Worker {
 public:
  TillWorker(Centre& centre, std::string till, std::string printer)
      : centre_{centre},
        till_{std::move(till)},
        printer_{std::move(printer)},
        name_{printerOf(till_, printer_)} {}

  const std::string& name() const override { return name_; }
  const std::string& till() const override { return till_; }
  void wake() override { centre_.wake(name_); }
  void end() override {}
  void join() override {}
  PrinterReport report() const override { return centre_.report(till_, printer_); }
  std::optional<Json> ask(Question, std::chrono::seconds) override { return std::nullopt; }
  bool hasOpenDocument() override { return false; }

 private:
  Centre& centre_;
  std::string till_, printer_, name_;
};

}  // namespace zentaro::service
