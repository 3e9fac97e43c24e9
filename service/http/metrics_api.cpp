// The figures of the service as Prometheus reads them.
#include <array>
#include <sstream>

#include "service/http/call.h"

namespace zentaro::service {

namespace {

std::string labelled(std::string_view text) {
  std::string result = "\"";
  for (const char character : text) {
    if (character == '"' || character == '\\') result += '\\';
    result += character == '\n' ? ' ' : character;
  }
  return result + "\"";
}

void family(std::ostream& text, const char* name, const char* type, const char* help) {
  text << "# HELP " << name << ' ' << help << "\n# TYPE " << name << ' ' << type << '\n';
}

void writeCounts(std::ostream& text, const Counts& counts) {
  family(text, "zentaro_jobs_total", "counter", "Jobs that became final, by verdict.");
  for (const auto& [labels, count] : counts.jobs) {
    const auto& [printer, kind, verdict] = labels;
    text << "zentaro_jobs_total{printer=" << labelled(printer) << ",kind=" << labelled(kind)
         << ",verdict=" << labelled(verdict) << "} " << count << '\n';
  }
  family(text, "zentaro_job_seconds", "summary", "From the beginning of a job to its end.");
  for (const auto& [printer, seconds] : counts.seconds)
    text << "zentaro_job_seconds_sum{printer=" << labelled(printer) << "} " << seconds << '\n'
         << "zentaro_job_seconds_count{printer=" << labelled(printer) << "} " << counts.ended.at(printer)
         << '\n';
  family(text, "zentaro_recoveries_total", "counter", "Jobs that were unknown and whose end was found out.");
  text << "zentaro_recoveries_total " << counts.recoveries << '\n';
  family(text, "zentaro_http_requests_total", "counter", "Requests, by the code of the answer.");
  for (const auto& [code, count] : counts.requests)
    text << "zentaro_http_requests_total{code=\"" << code << "\"} " << count << '\n';
}

void writeChain(std::ostream& text, const Json& chain) {
  for (const auto& [member, name, help] :
       {std::array{"connected", "zentaro_chain_connected", "1 while there is a connection to the broker."},
        {"behind", "zentaro_chain_behind", "Changes of this till that the centre has not seen."},
        {"tills", "zentaro_tills", "Tills that the centre knows."},
        {"online", "zentaro_tills_online", "Those of them that are online."}}) {
    if (!chain.contains(member)) continue;
    family(text, name, "gauge", help);
    const Json& value = chain.at(member);
    text << name << ' ' << (value.is_boolean() ? value.get<int>() : value.get<std::int64_t>()) << '\n';
  }
}

}  // namespace

void Api::getMetrics(Call& call) {
  std::ostringstream text;
  const Counts counts = parts_.chronicle.counts();
  writeCounts(text, counts);
  struct Gauge {
    const char *name, *help;
    std::ostringstream rows = {};
  };
  Gauge length{"zentaro_queue_length", "Jobs that wait."},
      oldest{"zentaro_queue_oldest_seconds", "How long the first of them has waited."},
      unknown{"zentaro_unknown_jobs", "Jobs that nobody knows about: a person has to look at the paper."},
      ready{"zentaro_printer_ready", "1 while the printer is ready or prints."},
      lastZ{"zentaro_last_z_timestamp_seconds", "When the last Z of this service was printed."};
  for (const std::string& name : parts_.workers.names()) {
    if (!call.token.sees(name)) continue;
    const std::string label = "{printer=" + labelled(name) + "} ";
    const Json json = printer(name);
    const auto row = [&](Gauge& gauge, auto value) { gauge.rows << gauge.name << label << value << '\n'; };
    row(length, json.at("queue").get<std::size_t>());
    row(oldest, json.at("oldest").get<std::int64_t>());
    row(unknown, json.at("unknown").size());
    row(ready, json.at("state") == "ready" || json.at("state") == "busy" ? 1 : 0);
    if (counts.lastZ.contains(name)) row(lastZ, counts.lastZ.at(name));
  }
  for (const Gauge* gauge : {&length, &oldest, &unknown, &ready, &lastZ}) {
    family(text, gauge->name, "gauge", gauge->help);
    text << gauge->rows.str();
  }
  if (call.token.only.empty()) writeChain(text, parts_.chain());
  family(text, "zentaro_build_info", "gauge", "1, with the version of the program.");
  text << "zentaro_build_info{version=\"" << ZENTARO_VERSION << "\"} 1\n";
  call.response.set_content(text.str(), "text/plain; version=0.0.4; charset=utf-8");
}

}  // namespace zentaro::service
