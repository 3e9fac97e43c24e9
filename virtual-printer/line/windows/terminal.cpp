// There are no pseudo-terminals here: the line is a free TCP port of this machine.
#include "virtual-printer/line/terminal.h"

#include <stdexcept>

#include "base/terminal/language.h"
#include "virtual-printer/line/tcp.h"

namespace virtual_printer {
namespace {

class LocalLine final : public HostLine {
 public:
  void connect() override { tcp_.connect(); }
  void hangUp() override { tcp_.hangUp(); }
  std::string name() const override { return "tcp://" + tcp_.name(); }
  void watch(WatchList& watched) const override { tcp_.watch(watched); }
  std::string read(const WatchList& watched) override { return tcp_.read(watched); }
  void write(std::string_view bytes) override { tcp_.write(bytes); }
  void rest() override { tcp_.rest(); }

 private:
  TcpLine tcp_{Address{"127.0.0.1", 0}, [](const std::string&) {}};
};

}  // namespace

bool hasLinks() { return false; }

std::unique_ptr<HostLine> makeTerminal(const std::filesystem::path& link) {
  if (link.empty()) return std::make_unique<LocalLine>();
  throw std::runtime_error(zentaro::terminal::say(
      "--link: en Windows no hay puertos seriales virtuales; diga --tcp 9600, y tcp://127.0.0.1:9600 donde se nombra el "
      "puerto",
      "--link: Windows has no virtual serial ports; say --tcp 9600, and tcp://127.0.0.1:9600 where the port is named"));
}

}  // namespace virtual_printer
