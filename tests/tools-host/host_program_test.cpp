// Objects and real ports: who holds a port, and when it is let go; and the program on its pipes.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <optional>

#include "support/fakes.h"
#include "support/process.h"
#include "text/unicode.h"
#include "tools/host/session.h"

namespace zentaro::tools::host_program_test {

using testing::contains;
using testing::Ran;

/// COM1 is a pseudo-terminal on which nobody answers.
class HostPorts : public ::testing::Test {
 protected:
  HostPorts() : platform(systemServices().serial), line(::posix_openpt(O_RDWR | O_NOCTTY)) {
    EXPECT_EQ(::grantpt(line) + ::unlockpt(line), 0);
    platform.settings.values[{"Config\\ModComm", "COM1"}] = utf16(::ptsname(line));
  }
  ~HostPorts() override { ::close(line); }

  std::string ask(const std::string& method, const std::string& params) {
    return session->answer(R"({"jsonrpc":"2.0","id":1,"method":")" + method + R"(","params":)" + params +
                           "}");
  }
  std::string openPort(int object) {
    const std::string prefix = R"({"object":)" + std::to_string(object);
    ask("create", R"({"class":"CZentaro"})");
    ask("put", prefix + R"(,"name":"CommPort","value":1})");
    return ask("put", prefix + R"(,"name":"PortOpen","value":true})");
  }

  testing::FakePlatform platform;
  int line;
  std::optional<HostSession> session{std::in_place};
};

constexpr const char* done = R"({"jsonrpc":"2.0","id":1,"result":{}})";

TEST_F(HostPorts, AreHeldUntilTheObjectIsReleased) {
  EXPECT_EQ(openPort(1), done);
  const std::string refused = openPort(2);
  EXPECT_TRUE(contains(refused, R"("error":{"code":40001,)")) << refused;
  EXPECT_TRUE(contains(
      refused,
      R"("data":{"source":"CZentaro.Let PortOpen","class":"Zentaro.CZentaro","member":"PortOpen"}})"))
      << refused;
  ask("release", R"({"object":2})");
  EXPECT_EQ(openPort(3), done) << "releasing 2 closed port 1, as both have the same number";
}

TEST_F(HostPorts, AreClosedWhenTheSessionEnds) {
  EXPECT_EQ(openPort(1), done);
  session.emplace();
  EXPECT_EQ(openPort(1), done);
}

class HostProgram : public testing::Shell {};

TEST_F(HostProgram, AnswersEachLineBeforeItReadsTheNextAndEndsWithItsInput) {
  write("talk.bash", R"BASH(
coproc host { zentaro host; }
ask() { echo "$1" >&"${host[1]}"; read -r -t 20 -u "${host[0]}" answer && echo "$answer"; }
ask '{"jsonrpc":"2.0","id":1,"method":"create","params":{"class":"CZentaro"}}'
ask 'x'
python3 -c '
for depth in 100000, 129, 128: print("[" * depth + "]" * depth)
print("x" * 17000000)' >&"${host[1]}"
for line in 1 2 3 4; do read -r -t 20 -u "${host[0]}" answer && echo "${answer:27}"; done
pid=$host_PID
exec {host[1]}>&-
wait "$pid"
)BASH");
  const Ran ran = run("bash " + file("talk.bash"));
  EXPECT_EQ(
      ran.output,
      "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":{\"object\":1}}\n"
      "{\"jsonrpc\":\"2.0\",\"id\":null,\"error\":{\"code\":-32700,\"message\":\"the line is not JSON "
      "in UTF-8, from byte 1 on\"}}\n"
      "\"error\":{\"code\":-32700,\"message\":\"the line is nested deeper than 128 levels\"}}\n"
      "\"error\":{\"code\":-32700,\"message\":\"the line is nested deeper than 128 levels\"}}\n"
      "\"error\":{\"code\":-32600,\"message\":\"batches are not supported: send one request per line\"}}\n"
      "\"error\":{\"code\":-32700,\"message\":\"the line is longer than 16 MB\"}}\n");
  EXPECT_EQ(ran.status, 0);
}

}  // namespace zentaro::tools::host_program_test
