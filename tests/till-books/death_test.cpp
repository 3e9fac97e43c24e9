// The computer dies at every operation on the disk while two sales are kept, one of them at its second attempt. Then
// the books hold what was acknowledged, and of the call that was under way all or nothing.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <sstream>

#include "failing_disk.h"
#include "till/books/books.h"

namespace zentaro::till::death_test {

using testing::Rest;

class Shop {
 public:
  using Step = std::function<void()>;

  explicit Shop(std::string path) : path_(std::move(path)) {}

  /// What is done one after the other; each is one transaction, or none.
  std::vector<Step> day() {
    std::vector<Step> steps;
    const auto add = [&](Step step) { steps.push_back(std::move(step)); };
    const auto reopen = [this] {
      books_.reset();
      books_ = std::make_unique<Books>(path_);
    };
    add(reopen);
    for (const char* id : {"A", "B", "B"}) {
      add([this, id] { job_ = *books_->put(order(id)); });
      add([this] { books_->begin(job_, {"A1", 7, 5000, 3}); });
      add([this] { books_->opened(job_, 8); });
      add([this] { books_->turn(job_, Turn::Close); });
      add([this, id] {
        const bool isPrinted = *id == 'A' || books_->find(id)->attempt == 2;
        const State state = isPrinted ? State::Printed : State::NotPrinted;
        books_->finish(job_, {state, std::string(nameOf(state)), 8});
      });
      add(reopen);  // the last to close moves the log into the file, and removes it
    }
    return steps;
  }
  void close() { books_.reset(); }

  static std::string told(const Books& books) {
    Job other;
    other.before.machine = "A1";
    std::ostringstream text;
    for (const Job& job : books.latest(100))
      text << job.id << job.attempt << nameOf(job.state) << nameOf(job.turn) << job.reachedClose
           << job.number.value_or(0) << ' ' << books.otherHolder(other, 8).has_value() << '\n';
    return text.str();
  }

 private:
  static Order order(const char* id) {
    Order made;
    made.id = id;
    made.owner = "service";
    made.body = std::string(3000, 'x');  // more than a page with its neighbours
    return made;
  }

  std::string path_;
  std::unique_ptr<Books> books_;
  Job job_;
};

// What the books tell after each step of a day on which nothing fails; in front what they tell before any.
std::vector<std::string> undisturbed() {
  const testing::Scratch folder;
  Shop shop(folder / "books.db");
  std::vector<std::string> told{""};
  for (const Shop::Step& step : shop.day()) {
    step();
    told.push_back(Shop::told(Books(folder / "books.db")));
  }
  return told;
}

/// How many steps were done before the disk died.
std::size_t stepsBeforeDeath(Shop& shop, const testing::FailingDisk& disk) {
  std::size_t done = 0;
  try {
    for (const Shop::Step& step : shop.day()) {
      step();
      if (disk.isDead()) break;
      ++done;
    }
  } catch (const BooksError&) {
  }
  shop.close();
  return done;
}

TEST(Death, LosesNothingThatWasAcknowledged) {
  const std::vector<std::string> told = undisturbed();
  // In memory, and every fifth, unless it is the proof.
  if (std::filesystem::is_directory("/dev/shm")) ::setenv("TMPDIR", "/dev/shm", 1);
  const int stride = std::getenv("ZENTARO_EVERY_DEATH") != nullptr ? 1 : 5;
  testing::FailingDisk disk;
  for (const Rest rest : {Rest::Kept, Rest::Dropped, Rest::Torn, Rest::Zeroed, Rest::AnyPart}) {
    int operation = 1 + static_cast<int>(rest);
    for (;; operation += stride) {
      const testing::Scratch folder, image;
      disk.dieAt(operation, rest, image / "");
      Shop shop(folder / "books.db");
      const std::size_t done = stepsBeforeDeath(shop, disk);
      if (!disk.isDead()) break;
      disk.dieAt(0, Rest::Kept, {});
      const Books books(image / "books.db");
      books.check();
      const std::string found = Shop::told(books);
      EXPECT_TRUE(found == told[done] || found == told[std::min(done + 1, told.size() - 1)])
          << "operation " << operation << ", rest " << static_cast<int>(rest) << ", " << done
          << " steps: " << found;
    }
    EXPECT_GT(operation, 100) << "the day ended before it had begun";
  }
  ::unsetenv("TMPDIR");
}

}  // namespace zentaro::till::death_test
