// Answers in JSON.
#include "service/http/problem.h"

namespace zentaro::service {

void answer(http::Response& response, const Problem& problem) {
  Json json{{"type", problem.type}, {"status", problem.status}, {"detail", problem.detail}};
  for (const auto& [name, value] : problem.more.items()) json[name] = value;
  response.status = problem.status;
  response.set_content(jsonLine(json) + "\n", "application/problem+json");
}

void answer(http::Response& response, int status, const Json& json) {
  response.status = status;
  response.set_content(jsonLine(json) + "\n", "application/json");
}

}  // namespace zentaro::service
