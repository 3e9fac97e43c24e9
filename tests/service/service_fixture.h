// The service with its printers, as its clients meet it: each id once on paper, whatever happens in between.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "service/shop.h"

namespace zentaro::service::service_test {

using namespace std::chrono_literals;
using testing::Answered;
using testing::eventually;
using testing::HttpClient;
using testing::httpRequest;

class Service : public testing::Shop {
 protected:
  std::string metrics() const {
    HttpClient client{port};
    client.send(httpRequest("GET /metrics", "Authorization: Bearer " + token + "\r\n"));
    return client.receive(10s);
  }
  // Not while it is being tried.
  bool withdraw(const std::string& id) const {
    return eventually([&] { return ask("DELETE /v1/jobs/" + id).status == 200; });
  }
  bool tells(const std::string& metric) const {
    return eventually([&] { return metrics().find("\n" + metric + "\n") != std::string::npos; });
  }
};

}  // namespace zentaro::service::service_test
