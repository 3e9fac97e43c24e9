// Claims, and the order of what is asked.
#include "till/course/station.h"

#include <thread>

#include "till/line/line_words.h"
#include "till/line/machine.h"

namespace zentaro::till {

using namespace std::chrono_literals;

Station::Station(const Options& options, BooksNeed need)
    : observer_(options.observer == nullptr ? nobody_ : *options.observer),
      options_(options),
      end_(std::chrono::steady_clock::now() + options.wait) {
  if (!options.keepsBooks) return;
  try {
    if (options.books == nullptr) own_.emplace(LockPatience{10s, [this] { observer_.waitsForBooks(); }});
    books_ = options.books == nullptr ? &*own_ : options.books;
    claims_.emplace(books_->path());
  } catch (const BooksError& error) {
    if (need == BooksNeed::Required) throw;
    observer_.goesOnWithoutBooks(error.what());
  }
}

IsBusy Station::isBusy() const {
  return [this](const std::string& machine) {
    return claims_ && !(machineClaim_ && machine == machine_) && claims_->isMachineTaken(machine);
  };
}

bool Station::waitsOn() {
  if (options_.stop.isWanted && options_.stop.isWanted()) return false;
  if (std::chrono::steady_clock::now() >= end_) return false;
  if (!std::exchange(toldWait_, true)) observer_.waitsForMachine();
  return true;
}

bool Station::claimDevice(const std::string& device) {
  device_ = device;
  if (!claims_ || deviceClaim_) return true;
  deviceClaim_ = waitFor([&] { return claims_->device(device); }, [this] { return waitsOn(); });
  return deviceClaim_.has_value();
}

std::optional<Ending> Station::arrive(CZentaro& printer, PrinterLine& line, Cause& cause) {
  printer.verifyCheckSum = true;
  if (claims_ && !deviceClaim_) {
    device_ = deviceOf(printer);
    deviceClaim_ = claims_->device(device_);
    if (!deviceClaim_) {
      printer.PortOpen(false);
      const bool isOurs = claimDevice(device_);
      if (!comeBack(printer) || !isOurs) return Ending::Busy;
    }
  }
  for (;;) {
    if (const auto refusal = meet(printer, line, cause)) return refusal;
    if (!claims_) return std::nullopt;
    machineClaim_ = claims_->machine(machine_);
    if (machineClaim_) break;
    // Required: who waits for another's sale has closed the port, which that one may want to reopen.
    printer.PortOpen(false);
    while (claims_->isMachineTaken(machine_) && waitsOn()) std::this_thread::sleep_for(100ms);
    const bool isFree = !claims_->isMachineTaken(machine_);
    if (!comeBack(printer) || !isFree) return Ending::Busy;
  }
  judgeOthers(printer, line);
  return std::nullopt;
}

// The port was open when it was handed over, and is again, unless somebody keeps it.
bool Station::comeBack(CZentaro& printer) {
  for (;;) {
    try {
      printer.PortOpen(true);
      return true;
    } catch (const AutomationError&) {
      printer.PortOpen(false);
      if (!waitsOn()) return false;
      std::this_thread::sleep_for(100ms);
    }
  }
}

std::optional<Ending> Station::meet(CZentaro& printer, PrinterLine& line, Cause& cause) {
  line.startAnywhere();
  line.expect({});
  const auto unreachable = [&](Heard heard) {
    const bool isNamed = heard == Heard::Stopped && !options_.stop.cause.empty();
    cause = {Cause::Kind::Silent, isNamed ? options_.stop.cause : trouble(heard), {}};
    return Ending::Unreachable;
  };
  if (const Heard heard = line.getInStep(); heard != Heard::InStep) return unreachable(heard);
  lastZ_ = lastZOf(printer);
  std::string serial;
  if (const Heard heard = line.askSerial(serial); heard != Heard::InStep) return unreachable(heard);
  line.expect(serial);
  device_ = deviceOf(printer);
  machine_ = serial.empty() ? device_ : serial;
  return std::nullopt;
}

ObjectSalePrinter Station::printerFor(Kind kind, CZentaro& printer, PrinterLine& line) const {
  ObjectSalePrinter made(printer, line, kind);
  made.heardLastZ(lastZ_);
  return made;
}

void Station::judgeOthers(CZentaro& printer, PrinterLine& line) {
  try {
    for (const Job& job : books_->judgeable(machine_)) {
      ObjectSalePrinter asked = printerFor(job.kind, printer, line);
      Keeper keeper = Keeper::resumed(*books_, job, observer_);
      const Verdict verdict = settleJob(job, asked, keeper, observer_);
      seesOthersDocument_ = seesOthersDocument_ || verdict.ending == Ending::OpenBefore;
      const Job& now = *keeper.job();
      if (now.state == job.state && now.isBeyondCounters == job.isBeyondCounters) continue;
      judged_.push_back(now);
      observer_.judged(now);
      if (isDayReport(now.kind)) books_->told(now);
    }
  } catch (const BooksError& error) {
    observer_.booksFell(error.what());
  }
}

}  // namespace zentaro::till
