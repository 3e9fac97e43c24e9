// What a line can do to an answer, over real pseudo-terminals or, asked for "tcp", real connections: cut, flipped, inserted and lost bytes, answers
// that are glued together or late, wait bytes without end, garbage. Each case is tried without and with the
// verification of checksums. After each, the port is closed and opened, and the next exchange must be good.
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <random>
#include <thread>

#include "library.h"
#include "peer.h"

namespace {

using namespace zentaro;
using namespace std::chrono_literals;

struct Piece {
  std::string bytes;
  std::chrono::milliseconds before = 0ms;
};

/// A frame of the printer with its sum; `answer` is that to the command that was sent.
std::string framed(std::string frame) {
  unsigned sum = 0;
  for (const char c : frame) sum += static_cast<unsigned char>(c);
  for (int shift = 12; shift >= 0; shift -= 4) frame += "0123456789ABCDEF"[(sum >> shift) & 15];
  return frame;
}
std::string answerTo(char sequence) {
  return framed(std::string{'\x02', sequence, '8'} +
                "\x1C"
                "0600\x1C"
                "3080\x1C"
                "00000001\x1C"
                "1234.56\x03");
}
const std::size_t answerSize = answerTo('!').size();

/// The line as the side of the printer has it.
class FarLine {
 public:
  virtual ~FarLine() = default;
  virtual std::string device() const = 0;
  /// Of the host that has the line at the moment; waits for one where lines come and go.
  virtual int descriptor() = 0;
  /// The host was seen to go.
  virtual void gone() {}
};

class TerminalLine final : public FarLine {
 public:
  TerminalLine() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    if (::grantpt(master_) != 0 || ::unlockpt(master_) != 0) std::abort();
    termios line{};
    ::tcgetattr(master_, &line);
    ::cfmakeraw(&line);
    ::tcsetattr(master_, TCSANOW, &line);
    slave_ = ::open(device().c_str(), O_RDWR | O_NOCTTY);  // the line must outlive a close
  }
  ~TerminalLine() override {
    ::close(slave_);
    ::close(master_);
  }
  std::string device() const override { return ::ptsname(master_); }
  int descriptor() override { return master_; }

 private:
  int master_, slave_ = -1;
};

class TcpLine final : public FarLine {
 public:
  TcpLine() : listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    if (::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
        ::listen(listener_, 8) != 0)
      std::abort();
  }
  ~TcpLine() override {
    gone();
    ::close(listener_);
  }
  std::string device() const override {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    return "tcp://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
  }
  int descriptor() override {
    pollfd next{listener_, POLLIN, 0};
    if (host_ < 0 && ::poll(&next, 1, 20'000) == 1)
      host_ = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    return host_;
  }
  void gone() override {
    if (host_ >= 0) ::close(host_);
    host_ = -1;
  }

 private:
  int listener_, host_ = -1;
};

/// The side of the printer: for one command, what a case makes of its answer.
class FarSide {
 public:
  explicit FarSide(bool overTcp) {
    if (overTcp)
      line_ = std::make_unique<TcpLine>();
    else
      line_ = std::make_unique<TerminalLine>();
  }
  std::string device() const { return line_->device(); }

  void answer(const std::function<std::vector<Piece>(char sequence)>& pieces, const std::atomic<bool>& stop) {
    const std::string command = receive();
    if (command.size() < 3) return;
    for (const Piece& piece : pieces(command[1])) {
      std::this_thread::sleep_for(piece.before);
      send(piece.bytes, stop);
    }
  }

 private:
  std::string receive() {
    std::string command;
    while (command.find('\x03') == std::string::npos || command.size() < command.find('\x03') + 5) {
      pollfd ready{line_->descriptor(), POLLIN, 0};
      if (::poll(&ready, 1, 20'000) <= 0) return {};
      std::array<char, 4096> buffer;
      const ssize_t got = ::read(ready.fd, buffer.data(), buffer.size());
      if (got > 0) command.append(buffer.data(), static_cast<std::size_t>(got));
      if (got == 0 || (got < 0 && errno == ECONNRESET)) line_->gone();
    }
    return command;
  }
  void send(std::string_view bytes, const std::atomic<bool>& stop) {
    while (!bytes.empty() && !stop) {
      pollfd ready{line_->descriptor(), POLLOUT, 0};
      ::poll(&ready, 1, 50);
      const ssize_t sent = ::write(ready.fd, bytes.data(), bytes.size());
      if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
  }

  std::unique_ptr<FarLine> line_;
};

struct Case {
  const char* kind;
  std::string name;
  std::function<std::vector<Piece>(char sequence)> pieces;
  bool mayBeUnseen = false;  // no sum can see it
  int mustBe = -1;           // the outcome, when only one is right
};

Case changed(const char* kind, const std::string& name, std::function<void(std::string&)> change,
             bool mayBeUnseen = false) {
  return {kind, name,
          [change = std::move(change)](char sequence) {
            std::string answer = answerTo(sequence);
            change(answer);
            return std::vector<Piece>{{answer}};
          },
          mayBeUnseen};
}

std::vector<Case> singleBytes() {
  std::vector<Case> cases;
  for (std::size_t at = 0; at < answerSize; ++at) {
    const std::string place = " at " + std::to_string(at);
    for (int bit = 0; bit < 8; ++bit)
      cases.push_back(changed("bit flipped", std::to_string(bit) + place,
                              [at, bit](std::string& answer) { answer[at] ^= static_cast<char>(1 << bit); }));
    cases.push_back(changed("byte lost", place, [at](std::string& answer) { answer.erase(at, 1); }));
    for (const char byte : {'\0', '\x0C', '\x02', '\x03', '\x1C', 'A', '\xFF'})
      cases.push_back(changed(
          byte == '\0' ? "NUL inserted" : "byte inserted",
          std::to_string(static_cast<unsigned char>(byte)) + place,
          [at, byte](std::string& answer) { answer.insert(at, 1, byte); }, byte == '\0'));
    cases.push_back({"cut short", place,
                     [at](char sequence) { return std::vector<Piece>{{answerTo(sequence).substr(0, at)}}; },
                     false, 1});
    cases.push_back({"in two pieces", place,
                     [at](char sequence) {
                       const std::string answer = answerTo(sequence);
                       return std::vector<Piece>{{answer.substr(0, at)}, {answer.substr(at), 60ms}};
                     },
                     false, 0});
  }
  return cases;
}

char before(char sequence) { return static_cast<char>(sequence == '!' ? '\x7F' : sequence - 1); }

std::string noise(std::size_t size, unsigned seed, bool withFrameBytes) {
  std::mt19937 dice(seed);
  std::string bytes;
  while (bytes.size() < size) {
    const char byte = static_cast<char>(dice());
    if (withFrameBytes || (byte != '\x02' && byte != '\x03')) bytes += byte;
  }
  return bytes;
}

std::vector<Case> wholeAnswers() {
  using Pieces = std::vector<Piece>;
  std::vector<Case> cases;
  cases.push_back({"glued", "twice", [](char s) { return Pieces{{answerTo(s) + answerTo(s)}}; }, true, 0});
  cases.push_back({"glued", "with the one before in front",
                   [](char s) { return Pieces{{answerTo(before(s)) + answerTo(s)}}; }, false, 4});
  cases.push_back({"glued", "byte by byte",
                   [](char s) {
                     Pieces pieces;
                     for (const char c : answerTo(s)) pieces.push_back({std::string(1, c), 3ms});
                     return pieces;
                   },
                   false, 0});
  for (const auto delay : {50ms, 100ms, 200ms, 300ms})
    cases.push_back({"slow", std::to_string(delay.count()),
                     [delay](char s) {
                       return Pieces{{answerTo(s), delay}};
                     },
                     false, 0});
  for (const auto delay : {1700ms, 2500ms, 4000ms})
    cases.push_back({"too late", std::to_string(delay.count()),
                     [delay](char s) {
                       return Pieces{{answerTo(s), delay}};
                     },
                     false, 1});
  cases.push_back({"wait bytes", "for 5 s",
                   [](char s) {
                     Pieces pieces(50, Piece{"\x0C", 100ms});
                     pieces.push_back({answerTo(s)});
                     return pieces;
                   },
                   false, 0});
  cases.push_back({"wait bytes", "a megabyte",
                   [](char s) { return Pieces{{std::string(1 << 20, '\x0C') + answerTo(s)}}; }, false, 0});
  cases.push_back(
      {"garbage", "two megabytes", [](char) { return Pieces{{noise(2 << 20, 1, false)}}; }, false, 1});
  for (unsigned seed = 1; seed <= 20; ++seed)
    cases.push_back({"garbage", "any bytes " + std::to_string(seed),
                     [seed](char s) { return Pieces{{noise(20'000, seed, true) + answerTo(s)}}; }});
  return cases;
}

struct Tally {
  int cases = 0, same = 0, different = 0, rejected = 0, silent = 0;
};

class Runner {
 public:
  Runner(std::vector<Case> cases, bool overTcp) : cases_(std::move(cases)), overTcp_(overTcp) {}

  int run() {
    std::array<std::thread, 8> threads;
    for (std::thread& thread : threads) thread = std::thread([this] { work(); });
    for (std::thread& thread : threads) thread.join();
    for (const auto& [kind, tally] : tallies_)
      std::printf(
          "  %-28s %5d cases: %4d accepted as sent, %3d accepted changed, %4d rejected, %4d timed out\n",
          kind.c_str(), tally.cases, tally.same, tally.different, tally.rejected, tally.silent);
    return failed_;
  }
  int tried() const { return static_cast<int>(cases_.size()) * 2; }

 private:
  void work() {
    FarSide farSide(overTcp_);
    bench::Library library(farSide.device(), 1);
    for (std::size_t i = next_++; i < cases_.size() * 2; i = next_++)
      one(farSide, library, cases_[i / 2], i % 2 == 1);
  }

  struct Seen {
    int outcome = 0;
    std::string body;
  };
  static Seen exchange(FarSide& farSide, CZentaro& z, const std::function<std::vector<Piece>(char)>& pieces) {
    std::atomic<bool> stop = false;
    std::thread far([&] { farSide.answer(pieces, stop); });
    Seen seen{z.StatusIF(u"N").int32(), {}};
    stop = true;
    far.join();
    const auto& fields = z.getResponse(Variant()).array().items();
    for (std::size_t i = 0; i + 1 < fields.size(); ++i)
      seen.body += fields[i].is(Variant::Kind::Text) ? utf8(fields[i].text()) + "|"
                                                     : std::to_string(fields[i].int16());
    return seen;
  }

  void one(FarSide& farSide, bench::Library& library, const Case& which, bool verify) {
    library.printer().verifyCheckSum = verify;
    const Seen seen = exchange(farSide, library.printer(), which.pieces);
    library.printer().PortOpen(false);
    library.printer().PortOpen(true);
    const auto good = [](char sequence) { return std::vector<Piece>{{answerTo(sequence)}}; };
    const Seen after = exchange(farSide, library.printer(), good);

    const bool accepted = seen.outcome == 0 || seen.outcome == 5, isSame = seen.body == after.body;
    const std::lock_guard lock(mutex_);
    Tally& tally = tallies_[std::string(which.kind) + (verify ? ", verified" : "")];
    ++tally.cases;
    ++(!accepted ? (seen.outcome == 1 ? tally.silent : tally.rejected)
       : isSame  ? tally.same
                 : tally.different);
    std::string problem;
    if (after.outcome != 0) problem = "the next exchange ends with " + std::to_string(after.outcome);
    if (which.mustBe >= 0 && seen.outcome != which.mustBe)
      problem = "ends with " + std::to_string(seen.outcome);
    if (verify && accepted && !isSame && !which.mayBeUnseen) problem = "is accepted with a changed body";
    if (problem.empty()) return;
    ++failed_;
    std::printf("  FAILED %s %s%s: %s\n", which.kind, which.name.c_str(), verify ? ", verified" : "",
                problem.c_str());
  }

  std::vector<Case> cases_;
  bool overTcp_;
  std::atomic<std::size_t> next_ = 0;
  std::mutex mutex_;
  std::map<std::string, Tally> tallies_;
  int failed_ = 0;
};

}  // namespace

int main(int count, char** words) {
  std::signal(SIGPIPE, SIG_IGN);
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const long before = proof::residentKilobytes();
  std::vector<Case> cases = singleBytes();
  for (Case& which : wholeAnswers()) cases.push_back(std::move(which));
  Runner runner(std::move(cases), count > 1 && words[1] == std::string_view("tcp"));
  const int failed = runner.run();
  std::printf("  memory %ld KiB at the start, %ld KiB at the end\n", before, proof::residentKilobytes());
  std::printf("%d passed, %d failed\n", runner.tried() - failed, failed);
  return failed == 0 ? 0 : 1;
}
