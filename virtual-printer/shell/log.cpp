// Writing of events.
#include "virtual-printer/shell/log.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

#include "base/files/careful_file.h"
#include "base/files/paths.h"
#include "base/system/error_text.h"
#include "base/terminal/language.h"
#include "virtual-printer/fiscal/calendar.h"
#include "virtual-printer/wire/codepage.h"

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;
using zentaro::terminal::say;

void addFrame(Json& line, const Event& event) {
  line["name"] = event.name;
  line["sequence"] = event.sequence;
  line["code"] = hexadecimal(event.code, 2);
  if (event.kind == EventKind::Answer) {
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
    case EventKind::Command:
    case EventKind::Answer:
      line["event"] = event.kind == EventKind::Command ? "command" : "answer";
      addFrame(line, event);
      break;
    case EventKind::Noise:
      line["event"] = "noise";
      line["bytes"] = hexBytes(event.bytes);
      break;
    case EventKind::Reset: line["event"] = "reset"; break;
    case EventKind::Fault:
    case EventKind::Power:
      line["event"] = event.kind == EventKind::Fault ? "fault" : "power";
      line["name"] = event.name;
      break;
    case EventKind::Unsaved:
      line["event"] = "unsaved";
      line["reason"] = event.name;
      break;
  }
  return line.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

LogFile::LogFile(const std::string& path) {
  try {
    file_ = zentaro::base::openToAppend(zentaro::files::pathOf(path));
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(std::string{"--log: "} + error.what());
  }
}

void LogFile::happened(const Moment& moment, const Event& event) {
  const std::string line = logLine(moment, event);
  const int error = zentaro::files::writeAll(file_.get(), line);
  if (error == 0) return trouble_.pass();
  trouble_.meet(say("--log: no se puede escribir: {}", "--log: cannot be written: {}",
                    {zentaro::system::errorText(error)}));
}

}  // namespace virtual_printer
