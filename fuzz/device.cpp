// A host that says anything to the virtual printer. Each line is a command, "42 a|1000|250|1600|M", which is
// sent as a good frame; "~" and raw bytes; "+" and milliseconds to wait; or "fault" and a plan.
#include "check.h"
#include "virtual-printer/fiscal/books_json.h"
#include "virtual-printer/line/engine.h"

namespace {

using namespace virtual_printer;
using fuzz::require;

class Bench {
 public:
  void take(std::string_view line) {
    if (line.starts_with('~')) return say(line.substr(1));
    if (line.starts_with('+')) return wait(line.size() * line.size());
    if (line.starts_with("fault ")) return arm(line.substr(6));
    say(frame(line));
  }

  void end() {
    wait(100'000);
    require(booksFromJson(toJson(device_.works().books)) == device_.works().books,
            "books that were saved load equal");
  }

 private:
  std::string frame(std::string_view line) {
    const std::size_t space = std::min(line.find(' '), line.size());
    unsigned code = 0;
    for (const char c : line.substr(0, space))
      code = code * 16 + static_cast<unsigned>(c > '9' ? c - 'A' + 10 : c - '0');
    sequence_ = sequence_ == '\x7F' ? '!' : static_cast<char>(sequence_ + 1);
    std::string text{stx, sequence_, static_cast<char>(code)};
    if (space < line.size())
      for (const std::string_view field : fuzz::split(line.substr(space + 1), '|'))
        text.append({fs}).append(field.empty() ? "\x7F" : field);
    text += etx;
    return text + hexadecimal(byteSum(text), 4);
  }

  void say(std::string_view bytes) {
    engine_.receive(bytes, now_);
    wait(0);
    const Works& works = device_.works();
    require(works.books.open.has_value() == (works.machine.phase() != Phase::None),
            "the books know of a document exactly when one is open");
    require(saved_ == works.books || saved_ == Books{}, "books are saved before the answer leaves");
  }

  void wait(std::size_t milliseconds) {
    now_.steady += std::chrono::milliseconds(milliseconds);
    engine_.due(now_);
  }

  void arm(std::string_view plan) {
    try {
      faults_.add(parsePlan(plan));
    } catch (const std::runtime_error&) {
    }
  }

  Moment now_{std::chrono::milliseconds{1000}, LocalTime{std::chrono::seconds{1'795'532'640}}};
  Books saved_;
  FaultSet faults_;
  Device device_{{{"J-1", "TIENDA", "ZPV0000007"}, 300}, {}, [this](const Books& books) {
                   saved_ = books;
                   return true;
                 }};
  Engine engine_{device_, faults_, Speed::Immediate, [](const Moment&, const Event&) {}};
  char sequence_ = '!';
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bench bench;
  for (const std::string_view line : fuzz::split(fuzz::textOf(data, size), '\n')) bench.take(line);
  bench.end();
  return 0;
}
