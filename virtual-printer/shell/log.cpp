// Writing of events.
#include "shell/log.h"

#include <cerrno>
#include <nlohmann/json.hpp>
#include <system_error>

#include "fiscal/calendar.h"
#include "wire/codepage.h"

namespace printer {
namespace {

using Json = nlohmann::ordered_json;

void addFrame(Json& line, const Event& event) {
  line["name"] = event.name;
  line["sequence"] = event.sequence;
  line["code"] = hexadecimal(event.code, 2);
  if (event.kind == EventKind::answer) {
    line["printerStatus"] = hexadecimal(event.printerStatus, 4);
    line["fiscalStatus"] = hexadecimal(event.fiscalStatus, 4);
  }
  line["fields"] = Json::array();
  for (const std::string& field : event.fields) line["fields"].push_back(utf8FromWire(field));
}

}  // namespace

std::string logLine(const Moment& moment, const Event& event) {
  Json line{{"time", written(moment.local, stampPattern)}, {"ms", moment.steady.count()}};
  switch (event.kind) {
    case EventKind::command:
    case EventKind::answer:
      line["event"] = event.kind == EventKind::command ? "command" : "answer";
      addFrame(line, event);
      break;
    case EventKind::noise:
      line["event"] = "noise";
      line["bytes"] = hexBytes(event.bytes);
      break;
    case EventKind::reset: line["event"] = "reset"; break;
    case EventKind::fault:
    case EventKind::power:
      line["event"] = event.kind == EventKind::fault ? "fault" : "power";
      line["name"] = event.name;
      break;
  }
  return line.dump() + "\n";
}

LogFile::LogFile(const std::string& path) : file_{std::fopen(path.c_str(), "ae")} {
  if (!file_) throw std::system_error{errno, std::generic_category(), "--log: opening " + path};
}

void LogFile::write(const Moment& moment, const Event& event) {
  std::fputs(logLine(moment, event).c_str(), file_.get());
  std::fflush(file_.get());
}

}  // namespace printer
