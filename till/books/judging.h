// What the journal says about a sale that somebody wants printed, without files or printer.
//
// Before the port is opened lookUp() says whether the sale may be printed at all. Then the open questions of the
// machine are judged one by one: openQuestion() says whether its open document is that of an entry, and whether
// the counters still speak about it. What came of them is set in the entries, and mayPrint() decides.
#pragma once

#include <string>
#include <vector>

#include "till/books/entry.h"

namespace zentaro::tools {

/// The sale that is to be printed.
struct Wish {
  std::string key;     // empty: none
  std::string digest;  // of its content
  bool again = false;  // for a new customer, although the same content was printed
};

enum class Answer {
  Print,
  AlreadyPrinted,  // under this key
  OtherContent,    // the key belongs to another content
  PrintedUntold,   // the same content was printed by a sale that was cut short
  StillUnknown     // nobody knows what came of it: the paper has to be looked at
};

struct Ruling {
  Answer answer = Answer::Print;
  const Entry* entry = nullptr;  // that it is about; null for Print
};

/// By the entries of all machines, before anything is sent. An open question does not yet stop a sale.
Ruling lookUp(const std::vector<Entry>& entries, const Wish& wish);
/// The same when the questions of the machine in front of one are answered as far as they can be.
Ruling mayPrint(const std::vector<Entry>& entries, const Wish& wish);

/// What the counters can say about an entry.
enum class Question {
  Countable,    // no document is open: judgedByCounters() answers
  ItsDocument,  // the document that is open is the entry's: it is to be ended first
  OthersDocument,
  TooLate  // there was a Z since, or the counters are below those of the entry
};
Question openQuestion(const Entry& entry, const Counters& now, const std::optional<int>& lastZ);

}  // namespace zentaro::tools
