// The resources of the service: each a member that reads one request and answers it. They know the books and the
// printers' workers, and nothing of ports.
#pragma once

#include <atomic>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/http/page_file.h"
#include "base/http/server.h"
#include "service/http/bell.h"
#include "service/http/books_pool.h"
#include "service/http/chronicle.h"
#include "service/http/problem.h"
#include "service/http/tokens.h"
#include "service/jobs/job_request.h"
#include "service/workers/workers.h"

namespace zentaro::service {

/// The page and the description of the resources.
std::span<const http::PageFile> pageFiles();

enum class Access { Open, Token, Read, Resolve };

class Api {
 public:
  struct Parts {
    Tokens& tokens;
    BooksPool& books;
    Workers& workers;
    Bell& bell;
    Chronicle& chronicle;
    std::vector<std::string> origins;  // pages that may ask from elsewhere
    std::function<Json()> tills;       // those of a chain; empty where this is no centre
    std::function<Json()> chain;       // how it is; null where there is none
  };
  explicit Api(Parts parts) : parts_{std::move(parts)} {}

  void answer(http::Server& server, const http::Request& request, http::Response& response);
  /// What the server refuses before a resource is looked for.
  void refuse(const http::Request& request, http::Response& response, int status) const;

  /// New jobs are refused from now on, what is known is still told.
  void end() { isEnding_ = true; }

 private:
  struct Call;
  struct Route;
  /// One that reads the stream of events, and how far it has come.
  struct Listener {
    till::Books::Filter filter;
    Token token;
    std::string authorization;
    std::int64_t after = 0;
    std::map<std::string, std::string> printers = {};  // what it was told of each
  };
  class Waiter;
  static const std::vector<Route>& routes();

  void allowOrigin(const http::Request& request, http::Response& response) const;
  void find(http::Server& server, const http::Request& request, http::Response& response);
  void letIn(Call& call, Access access);

  void putJob(Call& call);
  void getJob(Call& call);
  void deleteJob(Call& call);
  void putFinding(Call& call);
  void getJobs(Call& call);
  void getLatest(Call& call);
  void check(Call& call);
  void getPrinters(Call& call);
  void getPrinter(Call& call);
  void getDay(Call& call);
  void getTills(Call& call);
  void getEvents(Call& call);
  void getHealth(Call& call);
  void getMetrics(Call& call);
  static void servePage(const http::PageFile& file, const std::string& method, http::Response& response);

  // Each throws a Problem for what it does not let pass.
  static void needRightsFor(const Call& call, const JobRequest& request);
  void needAcceptable(const Call& call, const RequestReading& reading);
  till::Job enter(const Call& call, const std::string& id, const RequestReading& reading);
  till::Job visible(const Call& call);
  Worker& seen(const Call& call) const;
  static void needHere(const Worker& worker);

  void needLost(const Call& call, const Json& body, const Worker& worker, const till::Job& job) const;

  till::Job waitFor(const Call& call, till::Job job);
  void tell(Call& call, const till::Job& job);
  Problem conflict(const Call& call, std::string_view type, std::string text, const till::Job& job) const;
  bool isVirtual(const std::string& printer) const;
  Json listOf(const std::vector<till::Job>& jobs) const;
  std::pair<std::vector<till::Job>, std::int64_t> changes(const till::Books::Filter& filter,
                                                          std::int64_t after);
  Json printer(const std::string& name);
  std::optional<std::string> news(Listener& listener);
  std::string printerEvents(const Token& token, std::map<std::string, std::string>& told);

  Parts parts_;
  std::atomic<bool> isEnding_{false};
  std::atomic<int> waiters_{0};
};

}  // namespace zentaro::service
