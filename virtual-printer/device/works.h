// The inside of the printer that commands work on: books, fiscal state machine, paper and stations.
#pragma once

#include "virtual-printer/fiscal/machine.h"
#include "virtual-printer/paper/print_job.h"
#include "virtual-printer/paper/ticket.h"

namespace virtual_printer {

struct Identity {
  Owner owner;
  Rate igtfRate = 300;
};

/// What can be wrong with the printer itself. Set by faults, never by commands.
struct Conditions {
  bool paperNearEnd = false;
  bool paperOut = false;
  bool coverOpen = false;
  bool memoryNearFull = false;
  bool memoryFull = false;
  bool closingRequired = false;  // lifted by a Z closing
};

inline void requirePaper(const Conditions& conditions) {
  refuseIf(conditions.paperOut, Refusal::NoPaper);
  refuseIf(conditions.coverOpen, Refusal::CoverOpen);
}

struct Works {
  Works(Identity who, Books kept)
      : identity{std::move(who)}, books{std::move(kept)}, machine{books, identity.igtfRate} {}
  Works(const Works&) = delete;
  Works& operator=(const Works&) = delete;

  const Identity identity;
  Books books;
  Machine machine;
  PrintJob job;
  Conditions conditions;
  bool slipOn = false;
  std::uint8_t lastCommand = 0;  // other than a status request
  LocalTime now{};               // the printer's own clock, told before each command

  /// Ends the ticket in work with the given last lines.
  void finishTicket(const Lines& lines, const std::string& title) {
    job.print(lines);
    job.cut(title);
  }

  /// All that a command may change, to go back to when it is refused.
  struct Memory {
    Account account;
    std::size_t zRecords;
    Progress progress;
    Conditions conditions;
    bool slipOn;
  };
  Memory memory() const { return {books, books.zRecords.size(), machine.progress(), conditions, slipOn}; }
  void goBack(const Memory& before) {
    static_cast<Account&>(books) = before.account;
    books.zRecords.resize(before.zRecords);
    machine.goBack(before.progress);
    conditions = before.conditions;
    slipOn = before.slipOn;
    job.drop();
  }
};

}  // namespace virtual_printer
