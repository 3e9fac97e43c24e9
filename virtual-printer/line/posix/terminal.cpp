// A pseudo-terminal, and perhaps a link to it.
#include "virtual-printer/line/terminal.h"

#include <optional>

#include "virtual-printer/line/posix/link.h"
#include "virtual-printer/line/posix/pty.h"

namespace virtual_printer {
namespace {

class LinkedPty final : public HostLine {
 public:
  explicit LinkedPty(const std::filesystem::path& link) {
    if (!link.empty()) link_.emplace(link);
    name_ = link.string();
  }

  void connect() override {
    pty_.connect();
    if (link_) link_->pointTo(pty_.name());
  }
  void hangUp() override { pty_.hangUp(); }
  std::string name() const override { return link_ ? name_ : pty_.name(); }
  void watch(WatchList& watched) const override { pty_.watch(watched); }
  std::string read(const WatchList& watched) override { return pty_.read(watched); }
  void write(std::string_view bytes) override { pty_.write(bytes); }
  void rest() override { pty_.rest(); }

 private:
  std::optional<Link> link_;
  std::string name_;
  Pty pty_;
};

}  // namespace

bool hasLinks() { return true; }

std::unique_ptr<HostLine> makeTerminal(const std::filesystem::path& link) {
  return std::make_unique<LinkedPty>(link);
}

}  // namespace virtual_printer
