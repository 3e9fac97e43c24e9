// Files and links at the edge: the state file, the paper file, the link, the control socket's path.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <memory>

#include "base/files/temporary_folder.h"
#include "support/bytes.h"
#include "support/scratch.h"
#include "virtual-printer/line/posix/link.h"
#include "virtual-printer/line/posix/pty.h"
#include "virtual-printer/shell/control_socket.h"
#include "virtual-printer/shell/paper_watchers.h"
#include "virtual-printer/shell/state_file.h"

namespace virtual_printer::files_test {

using zentaro::testing::contains;
using zentaro::testing::occurrences;
using zentaro::testing::Scratch;
namespace files = std::filesystem;

template <class Action>
std::string complaint(Action action) {
  try {
    action();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "no complaint";
}

std::unique_ptr<ControlSocket> control(const files::path& path) {
  return std::make_unique<ControlSocket>(path, [](const std::string&) { return "ok"; });
}

TEST(StateFile, BooksComeBackAndABadFileIsLeftAlone) {
  const Scratch scratch;
  const files::path path = scratch / "state.json";
  Books books;
  {
    StateFile file{path};
    EXPECT_TRUE(file.load() == Books{}) << "no file yet";
    books.counters.invoice = 7;
    file.save(books);
  }
  EXPECT_TRUE(StateFile{path}.load() == books);
  scratch.write("state.json", "{\"format\": 1");
  const std::string said = complaint([&] { StateFile{path}.load(); });
  EXPECT_TRUE(contains(said, "state.json: it is not JSON, by a mistake in line 1; move the file away"))
      << said;
  EXPECT_EQ(scratch.read("state.json"), "{\"format\": 1");
}

TEST(StateFile, ASaveThatFailsKeepsTheOldBooksAndLeavesNothingBeside) {
  const Scratch scratch;
  StateFile file{scratch / "state.json"};
  Books books;
  books.zRecords.push_back({1});
  file.save(books);
  files::rename(scratch / "state.json", scratch / "kept");
  files::create_directory(scratch / "state.json");
  Books refused = books;
  refused.zRecords.push_back({2});
  EXPECT_TRUE(contains(complaint([&] { file.save(refused); }), "state.json is no file"));
  files::remove(scratch / "state.json");
  EXPECT_EQ(std::distance(files::directory_iterator{scratch / ""}, {}), 2) << "what was kept, and the lock";
  books.zRecords.push_back({3});
  {
    const zentaro::testing::SizeLimit limit(8);  // the disk is full
    EXPECT_NE(complaint([&] { file.save(books); }), "no complaint");
  }
  file.save(books);
  EXPECT_TRUE(file.load() == books);
}

// What stands where the new content is written first must not get into the file, nor be harmed.
TEST(StateFile, TakesOverWhatAKillLeftBesideAndNothingElse) {
  const Scratch scratch;
  scratch.write("precious", "precious and longer than the books are, so that an end of it would show: " +
                                std::string(5000, 'x'));
  const struct {
    const char* what;
    std::function<void(const files::path&)> place;
  } rows[] = {
      {"a killed printer's",
       [&](const files::path& fresh) { files::copy_file(scratch / "precious", fresh); }},
      {"another name of a file",
       [&](const files::path& fresh) { files::create_hard_link(scratch / "precious", fresh); }},
      {"a link", [&](const files::path& fresh) { files::create_symlink(scratch / "precious", fresh); }},
      {"a folder", [&](const files::path& fresh) { files::create_directory(fresh); }},
  };
  const std::string before = scratch.read("precious");
  for (const auto& row : rows) {
    const Scratch own;
    row.place(own / "state.json.new");
    const StateFile file{own / "state.json"};
    Books books;
    books.counters.invoice = 7;
    if (complaint([&] { file.save(books); }) == "no complaint")
      EXPECT_TRUE(file.load() == books) << row.what;
    else
      EXPECT_FALSE(files::exists(own / "state.json")) << row.what;
    EXPECT_EQ(scratch.read("precious"), before) << row.what;
  }
}

TEST(StateFile, IsWhatALinkLeadsTo) {
  const Scratch scratch;
  files::create_directory(scratch / "real");
  files::create_symlink("real/books.json", scratch / "state.json");
  StateFile file{scratch / "state.json"};
  file.save({});
  EXPECT_TRUE(files::is_symlink(scratch / "state.json"));
  EXPECT_TRUE(files::is_regular_file(scratch / "real" / "books.json"));
  EXPECT_TRUE(contains(complaint([&] { StateFile{scratch / "real" / "books.json"}; }), "another printer"));
}

TEST(StateFile, BelongsToOnePrinter) {
  const Scratch scratch;
  const StateFile first{scratch / "state.json"};
  EXPECT_TRUE(
      contains(complaint([&] { StateFile{scratch / "state.json"}; }), "another printer is using this file"));
  EXPECT_TRUE(contains(complaint([&] { StateFile{scratch / "no" / "state.json"}; }), "--state: "));
}

TEST(TemporaryFolder, IsItsOwnersAloneAndGoneAtTheEnd) {
  std::filesystem::path path;
  {
    const zentaro::base::TemporaryFolder folder;
    path = folder.path();
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms::owner_all);
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(PaperFile, IsWrittenByItsEndingAfterEachSheet) {
  const Scratch scratch;
  const struct {
    const char* name;
    const char* empty;
    const char* printed;
  } rows[] = {{"paper.txt", "", "HOLA\n"},
              {"paper.svg", "</svg>", ">HOLA</text>"},
              {"paper.html", "</html>", ">HOLA</text>"}};
  for (const auto& row : rows) {
    PaperFile file{scratch / row.name};
    EXPECT_TRUE(contains(scratch.read(row.name), row.empty)) << row.name;
    Roll roll;
    roll.watch(file);
    roll.print({{LineStyle::Plain, "HOLA", {}, {}}});
    EXPECT_FALSE(contains(scratch.read(row.name), "HOLA")) << row.name << ": the sheet is not finished";
    roll.cut("x");
    EXPECT_TRUE(contains(scratch.read(row.name), row.printed)) << row.name;
  }
  files::create_directory(scratch / "gone");
  PaperFile lost{scratch / "gone" / "paper.txt"};
  files::remove_all(scratch / "gone");
  testing::internal::CaptureStderr();
  for (int sheet = 0; sheet < 2; ++sheet) lost.finished({});
  EXPECT_EQ(occurrences(testing::internal::GetCapturedStderr(), "--paper: cannot write"), 1U) << "told once";
  EXPECT_TRUE(
      contains(complaint([&] { PaperFile{scratch / "paper.pdf"}; }), "must end in .txt, .svg or .html"));
  EXPECT_TRUE(contains(complaint([&] { PaperFile{scratch / "no" / "paper.txt"}; }), "No such file"));
}

TEST(Link, ReplacesOnlyALinkThatAPrinterLeftBehind) {
  const Scratch scratch;
  scratch.write("file", "precious");
  scratch.write("device", "");
  files::create_symlink(scratch / "device", scratch / "used");
  files::create_symlink(scratch / "gone", scratch / "stale");
  EXPECT_TRUE(contains(complaint([&] { Link{scratch / "file"}; }), "there is a file"));
  EXPECT_TRUE(contains(complaint([&] { Link{scratch / "used"}; }), "there is a link to"));
  Pty living;
  living.connect();
  Link serving{scratch / "served"};
  serving.pointTo(living.name());
  EXPECT_TRUE(contains(complaint([&] { Link{scratch / "served"}; }), "another printer is using it"));
  files::create_symlink(living.name(), scratch / "recycled");
  EXPECT_EQ(complaint([&] { Link{scratch / "recycled"}; }), "no complaint")
      << "the dead printer's device number was given to another printer";
  EXPECT_EQ(scratch.read("file"), "precious");
  for (const char* name : {"stale", "new"}) {
    {
      Link link{scratch / name};
      link.pointTo(scratch / "device");
      EXPECT_EQ(files::read_symlink(scratch / name), scratch / "device");
      link.pointTo(scratch / "file");
      EXPECT_EQ(files::read_symlink(scratch / name), scratch / "file");
    }
    EXPECT_FALSE(files::is_symlink(scratch / name)) << "removed at the end";
  }
  {
    Link link{scratch / "new"};
    link.pointTo(scratch / "device");
    files::remove(scratch / "new");
    files::create_symlink(scratch / "file", scratch / "new");
  }
  EXPECT_TRUE(files::is_symlink(scratch / "new")) << "somebody else's link by now";
}

TEST(ControlSocket, TakesOnlyAPathThatIsFreeOrStale) {
  const Scratch scratch;
  scratch.write("file", "precious");
  EXPECT_TRUE(contains(complaint([&] { control(scratch / "file"); }), "there is a file"));
  EXPECT_TRUE(
      contains(complaint([&] { control(scratch / std::string(200, 'x')); }), "too long for a socket"));
  EXPECT_EQ(scratch.read("file"), "precious");
  {
    const auto first = control(scratch / "socket");
    EXPECT_TRUE(contains(complaint([&] { control(scratch / "socket"); }), "another printer is using"));
    files::rename(scratch / "socket", scratch / "kept");
  }
  files::rename(scratch / "kept", scratch / "socket");  // as a killed printer leaves it behind
  const mode_t before = ::umask(0);
  {
    const auto second = control(scratch / "socket");
    EXPECT_EQ(files::status(scratch / "socket").permissions(), files::perms{0600}) << "whatever the umask";
  }
  ::umask(before);
  EXPECT_FALSE(files::exists(scratch / "socket"));
  {
    const auto third = control(scratch / "socket");
    files::remove(scratch / "socket");
    scratch.write("socket", "precious");
  }
  EXPECT_EQ(scratch.read("socket"), "precious") << "another's file by now";
}

}  // namespace virtual_printer::files_test
