// How something is printed: what sales and closings have in common.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "till/books/job.h"
#include "till/course/observer.h"
#include "till/course/stop.h"

namespace zentaro::till {

class Books;

struct Options {
  Stop stop = {};
  Observer* observer = nullptr;    // null: nobody
  std::optional<int> giveUp = {};  // seconds that a lost answer is waited for; else patienceOf() says
  std::chrono::seconds wait{0};    // for a machine that another program uses
  bool keepsBooks = true;          // false on a virtual printer
  Books* books = nullptr;          // null: those of booksPath(), opened for this call
  std::string owner = "till";      // who begins jobs: "sale", "host"
  std::string printerName = {};    // what the books call the printer; else its device
  std::optional<Job> queued = {};  // of the books, to be begun now; its owner is the caller
};

struct SellOptions : Options {
  std::string id = {};  // under it nothing is printed twice; empty: none
  bool again = false;   // without an id: the same content for a new customer
};

struct CloseOptions : Options {
  std::string id = {};  // under it no second Z is made; empty: none
  bool evenIfUnknown =
      false;  // a Z although it is unknown what became of a sale, whose evidence it takes away
};

}  // namespace zentaro::till
