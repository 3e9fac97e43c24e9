// One request on its way to a resource.
#pragma once

#include "service/http/api.h"

namespace zentaro::service {

struct Api::Route {
  std::string_view method, pattern;  // "{}" stands for a name
  Access access;
  void (Api::*handle)(Call&);
};

struct Api::Call {
  http::Server& server;
  const http::Request& request;
  http::Response& response;
  std::vector<std::string> names;
  Token token;

  /// Throws the problem of a token that lacks it.
  void need(Right right) const;
  /// A number of the query; throws the problem of one that is none.
  int number(const char* name, int least, int most, int fallback) const;
};

// One of those who wait for an end; beyond their number nobody waits.
class Api::Waiter {
 public:
  explicit Waiter(std::atomic<int>& waiters) : waiters_{waiters}, isFree_{++waiters <= most} {}
  Waiter(const Waiter&) = delete;
  Waiter& operator=(const Waiter&) = delete;
  ~Waiter() { --waiters_; }
  bool isFree() const { return isFree_; }

 private:
  static constexpr int most = 64;
  std::atomic<int>& waiters_;
  bool isFree_;
};

}  // namespace zentaro::service
