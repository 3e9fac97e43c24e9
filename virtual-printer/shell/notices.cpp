// Writing to standard error.
#include "virtual-printer/shell/notices.h"

#include <iostream>
#include <utility>

#include "base/terminal/harmless.h"
#include "base/terminal/language.h"

namespace printer {

using zentaro::terminal::say;

void notice(std::string_view text) { std::cerr << zentaro::terminal::harmless(text) + "\n"; }

void complain(std::string_view text) { notice("zentaro-printer: " + std::string{text}); }

void Notices::happened(const Moment&, const Event& event) {
  switch (event.kind) {
    case EventKind::Fault: return notice(say("falla: {}", "fault: {}", {event.name}));
    case EventKind::Power:
      return notice(say("corriente: {}", "power: {}",
                        {event.name == "off" ? say("cortada", "off") : say("conectada", "on")}));
    case EventKind::Unsaved:
      return complain(say("--state: {}; se rechaza lo que cambia la memoria fiscal",
                          "--state: {}; what changes the fiscal memory is refused", {event.name}));
    case EventKind::Command:
    case EventKind::Answer:
    case EventKind::Noise:
    case EventKind::Reset: break;
  }
}

void Trouble::meet(std::string_view text) {
  if (!std::exchange(isTold_, true)) complain(text);
}

}  // namespace printer
