// A thread that is left behind where nothing is ever typed.
#include "virtual-printer/shell/standard_input.h"

#include <unistd.h>

#include <array>
#include <thread>

#include "base/terminal/harmless.h"
#include "virtual-printer/shell/notices.h"

namespace virtual_printer {

void readStandardInput(const std::shared_ptr<Inbox>& inbox, ReplyTo reply) {
  std::thread{[inbox, reply = std::move(reply)] {
    LineReader lines;
    std::array<char, 1024> buffer{};
    for (;;) {
      const auto count = ::read(0, buffer.data(), buffer.size());
      if (count <= 0) return;
      for (const std::string& line : lines.feed({buffer.data(), static_cast<std::size_t>(count)})) {
        const bool isLeft = inbox->leave(std::packaged_task<std::string()>{[reply, line] {
          answerOnErrors(zentaro::terminal::harmlessLines(reply(line)));
          return std::string{};
        }});
        if (!isLeft) return;
      }
    }
  }}.detach();
}

}  // namespace virtual_printer
