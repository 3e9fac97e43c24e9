// The page for the shop and the description of the resources, both as they were built in.
#include "base/terminal/language.h"
#include "service/http/call.h"

namespace zentaro::service {

void Api::servePage(const http::PageFile& file, const std::string& method, http::Response& response) {
  if (method != "GET") {
    response.set_header("Allow", "GET");
    throw Problem{405, "method", terminal::say("esta dirección admite GET", "this address takes GET")};
  }
  response.set_content(std::string{file.content}, std::string{file.type});
}

}  // namespace zentaro::service
