// Who carries a printer's jobs to it: its own thread here, or the way to a till elsewhere.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "base/files/json.h"
#include "service/jobs/job_request.h"
#include "service/workers/printer_report.h"

namespace zentaro::service {

/// What a client may ask between two jobs.
enum class Question { Status, Day };

class Worker {
 public:
  Worker() = default;
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  virtual ~Worker() = default;

  virtual const std::string& name() const = 0;
  /// The till that has the printer; empty for a printer of this service.
  virtual const std::string& till() const {
    static const std::string here;
    return here;
  }

  /// A job was put into its queue, or settled by a person.
  virtual void wake() = 0;
  /// What it prints is ended first, and nothing more is begun.
  virtual void end() = 0;
  virtual void join() = 0;

  virtual PrinterReport report() const = 0;
  /// Nothing when the printer did not answer, or was busy for so long.
  virtual std::optional<Json> ask(Question question, std::chrono::seconds patience) = 0;
  /// Whether the printer says that a document is open on it.
  virtual bool hasOpenDocument() = 0;
};

}  // namespace zentaro::service
