// Lines of the host protocol, with printer objects on a scripted line. A line that begins with "!" is no
// request but the fields of the printer's next answer.
#include "base/files/json.h"
#include "check.h"
#include "scripted_system.h"
#include "tools/host/session.h"

namespace {

using fuzz::require;
using zentaro::Json;

void check(const Json& request, const std::string& answered) {
  const Json response = Json::parse(answered, nullptr, false);
  require(response.is_object() && response.value("jsonrpc", Json()) == "2.0", "every answer is a response");
  require(response.contains("result") != response.contains("error"), "with a result or an error");
  require(response.contains("id"), "and the number of its request");
  const bool hasId = request.is_object() && request.contains("id");
  const Json id = hasId ? request["id"] : Json();
  if (id.is_string() || id.is_number()) require(response["id"] == id, "which is the one that was given");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::ScriptedSystem system;
  zentaro::tools::HostSession session;
  for (const std::string_view line : fuzz::split(fuzz::textOf(data, size), '\n')) {
    if (line.starts_with('!'))
      system.answers.emplace_back(line.substr(1));
    else
      check(Json::parse(line, nullptr, false), session.answer(line));
  }
  return 0;
}
