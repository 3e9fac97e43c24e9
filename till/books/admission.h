// Whether a sale that somebody wants printed may be: what the books say of its id, and of the same content. The
// rule is pure; admitted() asks the books for what it needs.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "till/books/books.h"

namespace zentaro::till {

/// What is to be printed.
struct Wish {
  std::string id;         // empty: none
  std::string digest;     // of its content
  std::string oldDigest;  // by the rule of old journals
  bool again = false;     // without an id: for a new customer, although the same content was printed
};

enum class Answer {
  Print,
  AlreadyPrinted,  // under this id
  OtherContent,    // the id belongs to another content
  PrintedUntold,   // the same content was printed by a sale that was cut short
  StillUnknown,    // nobody knows what came of it: the paper has to be looked at
  Busy             // the id waits or is printed elsewhere
};

struct Ruling {
  Answer answer = Answer::Print;
  std::optional<Job> job = {};  // that it is about; nothing for Print
};

/// Before the port an open question stops nothing yet, for the machine in front may answer it. Before the opening
/// the questions of that machine are judged, and what is still open stops the sale.
enum class Stage { BeforePort, BeforeOpening };

/// Whether somebody prints on that machine now; false for the machine that one has claimed oneself.
using IsBusy = std::function<bool(const std::string& machine)>;

/// By the job of the wish's id, if any; or, for a wish without one, by those with its content that are open.
Ruling ruledById(const std::optional<Job>& job, const Wish& wish, Stage stage, const IsBusy& isBusy);
Ruling ruledByContent(const std::vector<Job>& jobs, const Wish& wish, Stage stage, const IsBusy& isBusy);

Ruling admitted(const Books& books, const Wish& wish, Stage stage, const IsBusy& isBusy);

}  // namespace zentaro::till
