// What is refused, in the form of RFC 9457: a short name for programs, and for people what is
// wrong, where, and what to do.
#pragma once

#include <string>
#include <string_view>

#include "base/files/json.h"
#include "base/http/server.h"

namespace zentaro::service {

struct Problem {
  int status = 500;
  std::string_view type;
  std::string detail;
  Json more = Json::object();  // further members
};

void answer(http::Response& response, const Problem& problem);
void answer(http::Response& response, int status, const Json& json);

}  // namespace zentaro::service
