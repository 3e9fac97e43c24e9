// Claims between threads, processes and the dead.
#include "till/books/claims.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "support/scratch.h"
#include "till/books/books_error.h"

namespace zentaro::till::claims_test {

class ClaimsFolder : public ::testing::Test {
 protected:
  testing::Scratch folder_;
  Claims claims_{folder_ / "books.db"};
};

TEST_F(ClaimsFolder, AreHeldByOneAndFreedByDeath) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    const std::optional<Claim> claim = claims_.machine("A1");
    if (claim && ::write(ready[1], "x", 1) == 1) ::pause();
    ::_exit(1);
  }
  char answer = 0;
  ASSERT_EQ(::read(ready[0], &answer, 1), 1);
  EXPECT_FALSE(claims_.machine("A1"));
  EXPECT_TRUE(claims_.isMachineTaken("A1"));
  EXPECT_FALSE(Claims(folder_ / "none/books.db").isMachineTaken("A1"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "none")) << "who looks makes nothing";
  EXPECT_TRUE(claims_.machine("A2")) << "another machine";
  EXPECT_TRUE(claims_.device("A1")) << "a device of that name";
  ::kill(child, SIGKILL);
  siginfo_t info{};  // dead, but not collected: it holds nothing any more
  ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT), 0);
  EXPECT_FALSE(claims_.isMachineTaken("A1"));
  const std::optional<Claim> mine = claims_.machine("A1");
  EXPECT_TRUE(mine);
  EXPECT_FALSE(claims_.machine("A1")) << "twice in one process";
  ::waitpid(child, nullptr, 0);
  ::close(ready[0]);
  ::close(ready[1]);
}

TEST_F(ClaimsFolder, AreWaitedForWhileThatIsWanted) {
  std::optional<Claim> held = claims_.machine("A1");
  int asked = 0;
  EXPECT_FALSE(waitFor([&] { return claims_.machine("A1"); }, [&] { return ++asked < 3; }));
  EXPECT_EQ(asked, 3);
  const auto frees = [&] {
    if (++asked == 5) held.reset();
    return true;
  };
  EXPECT_TRUE(waitFor([&] { return claims_.machine("A1"); }, frees));
}

TEST_F(ClaimsFolder, TakeAnyNameAndNoTwoForOne) {
  const std::string names[] = {"/dev/pts/3", "%2Fdev%2Fpts%2F3", "..", "", "tcp://caja:9100", "\xd1", "A1",
                               "a1"};
  std::vector<Claim> held;
  for (const std::string& name : names) {
    std::optional<Claim> claim = claims_.machine(name);
    ASSERT_TRUE(claim) << name;
    held.push_back(std::move(*claim));
  }
  EXPECT_TRUE(claims_.machine(std::string(5000, '/')));
  ::mkfifo((folder_ / "claims/machine-F").c_str(), 0600);
  EXPECT_NO_THROW(claims_.machine("F")) << "not waited for";
  testing::Scratch other;
  other.write("claims", "");
  EXPECT_THROW(Claims(other / "books.db").machine("A1"), BooksError);
}

}  // namespace zentaro::till::claims_test
