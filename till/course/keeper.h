// Keeps the job of a document in step with the document: each turn is in the books before the
// printer is sent what comes next.
#pragma once

#include <functional>
#include <optional>

#include "till/books/books.h"
#include "till/course/observer.h"
#include "till/course/verdict.h"

namespace zentaro::till {

/// What is printed when the books cannot be written: nothing, or a document that they do not know.
enum class BooksNeed { Required, Wanted };

class Keeper {
 public:
  /// Of a new job, which is begun when its document is opened; of one that waits in the books already; of one that
  /// was cut short. The books, which may be null for the first, and the observer must outlive this.
  Keeper(Books* books, Order order, BooksNeed need, Observer& observer)
      : books_(books), order_(std::move(order)), need_(need), observer_(observer) {}
  Keeper(Books& books, const Job& queued, Observer& observer)
      : books_(&books), order_(queued), need_(BooksNeed::Required), observer_(observer), queued_(queued) {}
  static Keeper resumed(Books& books, const Job& job, Observer& observer);

  // Before a frame; what they give is a reason not to send it.
  std::optional<Ending> opening(const Evidence& before, Cause& cause);
  bool opened(const std::optional<std::int64_t>& number, Cause& cause);
  bool closing(Cause& cause);
  /// Cancelling and finishing end what is on the paper, whatever the books can keep.
  void ending(Turn turn);

  std::optional<State> otherHolder(std::int64_t number) const;
  /// Whether the job waited in the books, and can wait again.
  bool cameFromQueue() const { return queued_.has_value(); }
  /// The job as it is in the books; nothing for one that they do not keep.
  const std::optional<Job>& job() const { return job_; }

  /// What programs read of something printed: it stands in the books with its end.
  void shows(std::function<std::string(const Verdict&)> result) { result_ = std::move(result); }
  std::string resultOf(const Verdict& verdict) const {
    return result_ && isPrinted(verdict.ending) ? result_(verdict) : std::string();
  }

  void finish(const Outcome& outcome);
  void told();

 private:
  bool write(const std::function<void()>& work, Cause& cause);

  Books* books_;
  Order order_;
  BooksNeed need_;
  Observer& observer_;
  std::optional<Job> queued_, job_;
  std::function<std::string(const Verdict&)> result_;
};

}  // namespace zentaro::till
