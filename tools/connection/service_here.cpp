// What a running service leaves in its books about itself.
#include "tools/connection/service_here.h"

#include <filesystem>

#include "base/files/json.h"
#include "base/files/paths.h"
#include "base/terminal/language.h"
#include "service/jobs/job_request.h"
#include "service/service.h"
#include "till/books/books.h"
#include "till/books/claims.h"

namespace zentaro::tools {

std::optional<ServiceHere> serviceHere(const std::string& books) {
  try {
    if (!std::filesystem::exists(files::pathOf(books)) ||
        !till::Claims(books).isPartTaken(service::serviceOwner))
      return std::nullopt;
    const Json said = Json::parse(till::Books(books).remembered(service::serviceNote), nullptr, false);
    return ServiceHere{said.at("url"), said.at("printers")};
  } catch (const std::exception&) {  // whoever asks is told of bad books elsewhere
    return std::nullopt;
  }
}

std::string nameOn(const ServiceHere& service, const std::string& device) {
  std::error_code failed;
  const std::filesystem::path wanted = std::filesystem::canonical(files::pathOf(device), failed);
  for (const auto& [name, path] : service.printers)
    if (path == device ||
        (!wanted.empty() && std::filesystem::canonical(files::pathOf(path), failed) == wanted))
      return name;
  return {};
}

std::string sendToService(const ServiceHere& service, const std::string& printer) {
  return terminal::say(
      "mande el trabajo al servicio: PUT {}/v1/jobs/ID con \"printer\":\"{}\" (docs/es/web.md)",
      "send the job to the service: PUT {}/v1/jobs/ID with \"printer\":\"{}\" (docs/web.md)",
      {service.url, printer});
}

}  // namespace zentaro::tools
