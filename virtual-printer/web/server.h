// The page over HTTP: its files, its events, and what it may do.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "base/system/address.h"
#include "virtual-printer/web/feed.h"

namespace virtual_printer {

using zentaro::system::Address;

class WebServer {
 public:
  /// Carries out a control line; nothing when the printer cannot. Called by web threads.
  using Act = std::function<std::optional<std::string>(const std::string& line)>;

  /// Serves from now on, on threads of its own. Throws std::runtime_error when it cannot listen there.
  WebServer(Address address, Feed& feed, Act act);
  WebServer(const WebServer&) = delete;
  WebServer& operator=(const WebServer&) = delete;
  /// Closes the feed, so that no thread waits for it any more.
  ~WebServer();

  std::string url() const;

 private:
  class Service;
  Address address_;
  std::unique_ptr<Service> service_;
};

}  // namespace virtual_printer
