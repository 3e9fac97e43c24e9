// What the thread of a printer does, turn by turn: it visits the printer, judges what is open, and begins the next job.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "service/jobs/job_request.h"
#include "service/workers/printer_port.h"
#include "service/workers/printer_worker.h"
#include "till/books/books.h"
#include "till/course/observer.h"
#include "till/course/options.h"
#include "till/line/printer_line.h"

namespace zentaro::service {

class PrinterWorker::Loop : private till::Observer {
 public:
  explicit Loop(PrinterWorker& worker) : worker_{worker} {}
  ~Loop() override = default;

  void run();

 private:
  using Clock = std::chrono::steady_clock;

  /// Gives when the next one is due without being woken.
  Clock::time_point turn();
  void expire();
  void answerAsked();
  bool reach();
  void visit();
  void look(const std::string& machine, till::PrinterLine& asked);
  void nameLeftOvers(const std::string& machine);
  std::int64_t missing(const std::string& machine, till::Kind kind, std::int64_t last) const;
  std::optional<Json> day();

  std::optional<till::Job> next();
  std::string unknownOf(const till::Job& job) const;
  void carry(const till::Job& job);
  bool isForThisMachine(const till::Job& job, const JobRequest& request);
  void printDocument(const till::Job& job, const JobRequest& request);
  void printClosing(const till::Job& job, const JobRequest& request);
  template <class Verdict>
  void settle(const till::Job& job, const Verdict& verdict, bool wasOpened);

  till::PrinterLine line();
  void fill(till::Options& options);
  void setCondition(Condition condition, const std::string& cause, const std::string& next = {});

  void begins(const till::StepPlace& step) override;

  PrinterWorker& worker_;
  std::unique_ptr<till::Books> books_;
  std::unique_ptr<PrinterPort> port_;
  std::map<std::int64_t, Clock::time_point> refused_;  // by key of the books: when it is tried again
  Clock::time_point visitDue_{}, stopWaiting_{};
  std::string running_;  // the id of the job that is printed
  bool isBlocked_ = false;
};

}  // namespace zentaro::service
