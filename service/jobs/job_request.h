// The body of a PUT: what is to be printed where, and how long it may wait for that. Reads nothing but the text.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "till/books/job.h"
#include "till/document/sale_file.h"
#include "till/document/totals.h"

namespace zentaro::service {

/// Under this name the service's jobs stand in the books: nobody else begins them.
inline constexpr const char* serviceOwner = "serve";

struct JobRequest {
  std::string printer;
  till::Kind kind = till::Kind::Invoice;
  till::Sale sale;      // of a document
  till::Totals totals;  // of a document that is in order
  std::string digest;   // of the content; empty when there is none that could be compared
  int attempt = 1;
  std::chrono::seconds patience{60};
  std::string machine;    // the serial number that must be in front; empty: any
  bool isForced = false;  // a Z although a job of the machine is unknown

  bool isClosing() const { return kind == till::Kind::X || kind == till::Kind::Z; }
};

struct RequestReading {
  JobRequest request;
  till::Problems problems;  // when there are any, the request is not to be carried out
  std::string noJson = {};  // where and what, for a text that is no JSON
};

RequestReading readJobRequest(std::string_view body);

/// What the books are to keep; its patience runs from now on.
till::Order orderOf(const std::string& id, const std::string& body, const JobRequest& request);

/// The sale alone, as a check asks for it.
RequestReading readCheckRequest(std::string_view body);

}  // namespace zentaro::service
