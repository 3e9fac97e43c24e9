// Every system call of the library fails once, in every way that it can, in the course of a sale: opening the
// port, an invoice, an X closing, closing the port. After each failure: nothing is lost (memory is the
// sanitizers' affair, descriptors are counted here), the call ended in time with an outcome or an error that
// it promises, no success was told that is none, and the same object opens the port again and works.
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <functional>
#include <set>
#include <string>
#include <thread>

#include "automation/automation_error.h"
#include "failing_calls.h"
#include "peer.h"
#include "printer/czentaro.h"
#include "reports/status_hasar.h"

namespace {

using namespace zentaro;
using namespace proof;
using Clock = std::chrono::steady_clock;

constexpr double longest = 6;  // seconds of one operation; the time-out is 1, the machine may be busy

struct Step {
  const char* name;
  std::function<int(CZentaro&)> run;
};
const Step steps[] = {
    {"open", [](CZentaro& z) { return z.PortOpen(true), 0; }},
    {"status", [](CZentaro& z) { return z.StatusIF(u"N").int32(); }},
    {"invoice", [](CZentaro& z) { return int{z.IniciarFactura("A", "V-1")}; }},
    {"item", [](CZentaro& z) { return int{z.PasarLineaFactura("x", 10, 1, 16)}; }},
    {"payment", [](CZentaro& z) { return int{z.RecibirPago(20)}; }},
    {"close document", [](CZentaro& z) { return int{z.CerrarComprobante()}; }},
    {"X closing", [](CZentaro& z) { return int{z.RealizarCierre(CIERRE_X)}; }},
    {"close", [](CZentaro& z) { return z.PortOpen(false), 0; }},
};

/// What happened to a step, and what the host has to believe.
struct Course {
  const char* failedAt = nullptr;
  int outcome = 0;      // of the step that failed
  int error = 0;        // the number of the error that it raised
  double slowest = 0;   // seconds of the slowest step
  bool closed = false;  // the close of the document had the outcome 0
};

Course sell(CZentaro& z) {
  Course course;
  for (const Step& step : steps) {
    const auto begin = Clock::now();
    try {
      course.outcome = step.run(z);
    } catch (const AutomationError& error) {
      course.error = error.number();
    }
    course.slowest = std::max(course.slowest, std::chrono::duration<double>(Clock::now() - begin).count());
    if (course.outcome != 0 || course.error != 0) {
      course.failedAt = step.name;
      return course;
    }
    if (step.name == std::string_view("close document")) course.closed = true;
  }
  return course;
}

class Proof {
 public:
  /// `traced`: with both traces on.
  explicit Proof(bool traced) : traced_(traced) {
    settings_ = (peer_.folder() / "settings.ini").string();
    std::ofstream file(settings_);
    const std::string folder = peer_.folder().string();
    file << "[Config\\ModComm]\nCOM1=" << peer_.device() << "\nDEBUG=" << traced << "\nDumpFile=" << folder
         << "/driver\n[Config\\EPSONZT]\nTimeOutZT=1\nDebugZT=" << traced << "\nDumpZT=" << folder
         << "/object\n";
    file.close();
    ::setenv("ZENTARO_SETTINGS", settings_.c_str(), 1);
    // Where the traces go when the settings cannot be read.
    ::setenv("XDG_STATE_HOME", folder.c_str(), 1);
    std::filesystem::current_path(peer_.folder());
    lastInvoice_ = afterwards("at the start", {});
  }

  /// All calls, or those of that name.
  int run(std::string_view wanted) {
    countCalls();
    const Course good = course();
    const CallCounts counts = stopFailures();
    if (good.failedAt != nullptr) complain("without a failure", std::string("fails at ") + good.failedAt);
    lastInvoice_ = afterwards("without a failure", good);
    for (const CallRow& row : callTable())
      if (wanted.empty() || wanted == row.name) every(row, counts[static_cast<std::size_t>(row.call)]);
    return failed_;
  }
  int injected() const { return injected_; }

 private:
  void every(const CallRow& row, int count) {
    const int before = injected_, failedBefore = failed_;
    for (int number = 0; number < count; ++number)
      for (const Failure& failure : row.failures)
        for (const bool lasting : {false, true})
          if (!lasting || failure.canLast) one(row, number, failure, lasting);
    std::printf("  %-10s %3d calls, %5d failures injected, %5d survived\n", row.name, count,
                injected_ - before, injected_ - before - (failed_ - failedBefore));
  }

  void one(const CallRow& row, int number, const Failure& failure, bool lasting) {
    const std::string what = std::string(row.name) + " " + std::to_string(number + 1) + ", " + failure.name +
                             (lasting ? " lasting" : "") + (traced_ ? ", traced" : "");
    ::alarm(60);
    const std::size_t descriptors = openDescriptors();
    orderFailure(row.call, number, failure, lasting);
    failedOne_ = false;
    const Course now = course();
    stopFailures();
    injected_ += hasStruck();  // the calls of a wait are not always as many
    check(what, now);
    lastInvoice_ = afterwards(what, now);
    if (openDescriptors() != descriptors) complain(what, "a descriptor is left open: " + descriptorNames());
    failed_ += failedOne_;
  }

  /// The sale with a new object, or with what is left of it: the object goes on to afterwards().
  Course course() {
    try {
      z_ = std::make_unique<CZentaro>();  // opens its trace
    } catch (const AutomationError& error) {
      return {.failedAt = "creation", .error = error.number()};
    }
    z_->CommPort = 1;
    return sell(*z_);
  }

  void check(const std::string& what, const Course& now) {
    // An opening that fails raises 40001; a trace that cannot be written, an error of files.
    const bool isPromised =
        now.error == 0 || now.error == 40001 || (traced_ && now.error >= 52 && now.error <= 76);
    if (!isPromised) complain(what, "raises " + std::to_string(now.error) + " at " + now.failedAt);
    if (now.outcome < -1 || now.outcome > 6) complain(what, "has outcome " + std::to_string(now.outcome));
    if (now.slowest > longest) complain(what, "takes " + std::to_string(now.slowest) + " s");
  }

  /// The port opened again with the same object: the printer answers, an open document is cancelled, and the
  /// books know of the sale if it was told to be closed. The number of the last invoice.
  int afterwards(const std::string& what, const Course& now) {
    if (!z_) z_ = std::make_unique<CZentaro>();
    z_->CommPort = 1;
    int last = 0;
    try {
      std::unique_ptr<statusHASAR> status;
      // The answer that the failure cut off may still be on its way; only opening the port discards it.
      for (int tries = 0; tries < 6 && !status; ++tries) {
        z_->PortOpen(false);
        std::this_thread::sleep_for(std::chrono::milliseconds(50) * tries);
        z_->PortOpen(true);
        status = z_->GetStatusHASAR();
      }
      if (!status) {
        complain(what, "the printer does not answer afterwards");
      } else {
        last = status->numeroUltimaFactura;
        if (status->statusDocumento != 0 && now.closed) complain(what, "a closed document is open");
        if (status->statusDocumento != 0 && z_->CancelarComprobante() != 0)
          complain(what, "cannot be cancelled");
        if (now.closed && last <= lastInvoice_) complain(what, "a closed document is not in the books");
      }
    } catch (const AutomationError& error) {
      complain(what, std::string("afterwards: ") + error.what());
    }
    z_.reset();
    return last;
  }

  void complain(const std::string& what, const std::string& problem) {
    failedOne_ = true;
    std::printf("  FAILED %s: %s\n", what.c_str(), problem.c_str());
  }

  Peer peer_;
  std::string settings_;
  bool traced_, failedOne_ = false;
  std::unique_ptr<CZentaro> z_;
  int lastInvoice_ = 0, injected_ = 0, failed_ = 0;
};

}  // namespace

int main(int count, char** words) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  std::signal(SIGALRM, [](int) {
    constexpr std::string_view text = "FAILED: an operation hangs\n";
    if (::write(1, text.data(), text.size()) > 0) ::abort();
  });
  int injected = 0, failed = 0;
  for (const bool traced : {false, true}) {
    std::printf(traced ? "with both traces on\n" : "without traces\n");
    Proof proof(traced);
    failed += proof.run(count > 1 ? words[1] : "");
    injected += proof.injected();
  }
  std::printf("%d passed, %d failed\n", injected - failed, failed);
  return failed == 0 ? 0 : 1;
}
