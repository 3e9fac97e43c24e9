// Looking at a running service from outside.
#include "tools/doctor/service_facts.h"

#include "base/terminal/language.h"
#include "service/jobs/job_request.h"
#include "till/books/books.h"
#include "tools/connection/service_here.h"

namespace zentaro::tools {

using terminal::say;

void judgeService(const std::string& books, Findings& findings) {
  const std::optional<ServiceHere> service = serviceHere(books);
  if (!service) {
    findings.add("zentaro serve",
                 {"no-service", false, say("ninguno tiene estos libros", "none keeps these books")});
    return;
  }
  findings.add("zentaro serve", {"service", false,
                                 service->url.empty() ? say("está, sin HTTP", "runs, without HTTP")
                                                      : say("está en {}", "runs at {}", {service->url})});
  const till::Books read(books);
  for (const auto& [name, device] : service->printers) {
    const std::size_t waiting = read.queued(service::serviceOwner, name).size();
    std::string subject = name;
    subject += " " + device;
    findings.add(subject, {"queue", false,
                           say("trabajos en espera: {}", "jobs waiting: {}", {std::to_string(waiting)})});
  }
}

}  // namespace zentaro::tools
