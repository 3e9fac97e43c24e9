// What the books add to a sale, with none, a thousand and a million jobs in them.
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "figures.h"
#include "measure.h"
#include "sections.h"
#include "till/books/admission.h"

namespace bench {
namespace {

namespace till = zentaro::till;

class Shop {
 public:
  explicit Shop(int jobs) {
    { const till::Books made{path()}; }  // the file
    // Three months of a chain's centre, one in a thousand of them unknown.
    const std::string fill =
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(jobs) +
        ") "
        "INSERT INTO job SELECT i, 'J' || i, 'sale', 'caja1', 'invoice', 1, '2:' || i, '', 1000, 1160, 60, '', 0, "
        "iif(i % 1000 = 0, 'unknown', 'printed'), 'printed', 'Z1A' || (i % 100), i, 5000, 3, 'close', 1, i, '{}', '', "
        "1, 1, 1700000000, 1700000000, 1700000000, i FROM n WHERE i <= " +
        std::to_string(jobs);
    sqlite3* database = nullptr;
    sqlite3_open(path().c_str(), &database);
    if (jobs > 0) sqlite3_exec(database, fill.c_str(), nullptr, nullptr, nullptr);
    sqlite3_close(database);
  }
  Shop(const Shop&) = delete;
  Shop& operator=(const Shop&) = delete;
  ~Shop() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  /// Processor seconds of all that one sale does with the books, from their opening to their closing.
  double sale() {
    const std::string id = "S" + std::to_string(++sales_), digest = "2:s" + std::to_string(sales_);
    const auto nobody = [](const std::string&) { return false; };
    const double begin = processorSeconds();
    {
      till::Books books(path());
      const till::Wish wish{sales_ % 2 == 0 ? id : "", digest, "1:s", false};
      till::admitted(books, wish, till::Stage::BeforePort, nobody);
      books.judgeable("Z1A7");
      till::admitted(books, wish, till::Stage::BeforeOpening, nobody);
      till::Order order;
      order.id = wish.id;
      order.digest = digest;
      const till::Job job = *books.open(order, {"Z1A7", sales_, 5000, 3});
      books.opened(job, sales_ + 1);
      books.turn(job, till::Turn::Close);
      books.finish(job, {till::State::Printed, "printed", sales_ + 1});
      books.told(job);
    }
    return processorSeconds() - begin;
  }
  double check() {
    const till::Books books(path());
    const double begin = processorSeconds();
    books.check();
    return processorSeconds() - begin;
  }

 private:
  std::string path() const { return (folder_ / "books.db").string(); }

  std::filesystem::path folder_ = [] {
    std::string pattern = (std::filesystem::temp_directory_path() / "zentaro-bench-XXXXXX").string();
    return std::filesystem::path(::mkdtemp(pattern.data()));
  }();
  int sales_ = 0;
};

}  // namespace

void measureBooks(bool isShort) {
  std::printf("the books, processor milliseconds a sale   of none   a check of the file\n");
  double ofNone = 0;
  for (const int jobs : {0, 1000, 1000000}) {
    Shop shop(jobs);
    const int sales = isShort ? 40 : 400;
    std::vector<double> times;
    times.reserve(static_cast<std::size_t>(sales));
    for (int sale = 0; sale < sales; ++sale) times.push_back(shop.sale() * 1e3);
    if (jobs == 0) ofNone = median(times);
    constexpr double aimed = 1.2;
    expectAtMost("processor time of a sale in the books, of one in none", median(times) / ofNone, aimed);
    std::printf("  %7d jobs %28.2f %9.2f %12.0f ms\n", jobs, median(times), median(times) / ofNone,
                shop.check() * 1e3);
  }
}

}  // namespace bench
