// Writing to standard error.
#include "virtual-printer/shell/notices.h"

#include <iostream>
#include <utility>

#include "base/terminal/console.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "virtual-printer/shell/outlet.h"

namespace virtual_printer {

using zentaro::terminal::say;

void notice(std::string_view text) { answerOnErrors(zentaro::terminal::harmless(text)); }

void answerOnErrors(std::string text) {
  static Outlet errors{2};
  text += '\n';
  if (zentaro::terminal::isTerminal(zentaro::terminal::Stream::Errors))
    std::cerr << text;  // fitted to its width
  else
    errors.write(std::move(text));
}

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

}  // namespace virtual_printer
