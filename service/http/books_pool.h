// The books for many threads: each request borrows a connection that nobody else uses meanwhile.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "till/books/books.h"

namespace zentaro::service {

class BooksPool {
 public:
  explicit BooksPool(std::string path) : path_{std::move(path)} {}

  class Loan {
   public:
    explicit Loan(BooksPool& pool) : pool_{pool}, books_{pool.take()} {}
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;
    ~Loan() { pool_.giveBack(std::move(books_)); }
    till::Books& operator*() const { return *books_; }
    till::Books* operator->() const { return books_.get(); }

   private:
    BooksPool& pool_;
    std::unique_ptr<till::Books> books_;
  };

  /// Raises BooksError when they cannot be opened.
  Loan borrow() { return Loan{*this}; }
  const std::string& path() const { return path_; }

 private:
  std::unique_ptr<till::Books> take() {
    {
      const std::lock_guard lock{mutex_};
      if (!free_.empty()) {
        std::unique_ptr<till::Books> books = std::move(free_.back());
        free_.pop_back();
        return books;
      }
    }
    return std::make_unique<till::Books>(path_);
  }
  void giveBack(std::unique_ptr<till::Books> books) {
    constexpr std::size_t mostKept = 8;
    const std::lock_guard lock{mutex_};
    if (free_.size() < mostKept) free_.push_back(std::move(books));
  }

  std::string path_;
  std::mutex mutex_;
  std::vector<std::unique_ptr<till::Books>> free_;
};

}  // namespace zentaro::service
