// Writing each turn, and what a failure means then.
#include "till/course/keeper.h"

#include "base/terminal/language.h"

namespace zentaro::till {

using terminal::say;

namespace {

using namespace std::chrono_literals;

Cause booksCause(const BooksError& error) { return {Cause::Kind::Books, error.what(), {}}; }

LockPatience patienceInside(Observer& observer) {
  return {5s, [&observer] { observer.waitsForBooks(); }};
}

}  // namespace

Keeper Keeper::resumed(Books& books, const Job& job, Observer& observer) {
  Keeper keeper(&books, job, BooksNeed::Required, observer);
  keeper.job_ = job;
  return keeper;
}

std::optional<Ending> Keeper::opening(const Evidence& before, Cause& cause) {
  if (books_ == nullptr) return std::nullopt;
  try {
    if (queued_ && books_->begin(*queued_, before))
      job_ = books_->at(queued_->key);
    else if (!queued_)
      job_ = books_->open(order_, before);
    if (!job_) {
      cause = {Cause::Kind::Books,
               say("otro proceso ya imprime la venta \"{}\"", "another process is printing the sale \"{}\"",
                   {order_.id}),
               {}};
      return Ending::Busy;
    }
    books_->patience(patienceInside(observer_));
    return std::nullopt;
  } catch (const BooksError& error) {
    if (need_ == BooksNeed::Required) {
      cause = booksCause(error);
      return Ending::NotPrinted;
    }
    observer_.goesOnWithoutBooks(error.what());
    return std::nullopt;
  }
}

bool Keeper::write(const std::function<void()>& work, Cause& cause) {
  if (!job_) return true;
  try {
    work();
    return true;
  } catch (const BooksError& error) {
    cause = booksCause(error);
    return false;
  }
}

bool Keeper::opened(const std::optional<std::int64_t>& number, Cause& cause) {
  return write([&] { books_->opened(*job_, number); }, cause);
}

bool Keeper::closing(Cause& cause) {
  return write([&] { books_->turn(*job_, Turn::Close); }, cause);
}

void Keeper::ending(Turn turn) {
  Cause cause;
  if (!write([&] { books_->turn(*job_, turn); }, cause)) observer_.booksFell(cause.text);
}

std::optional<State> Keeper::otherHolder(std::int64_t number) const {
  if (!job_) return std::nullopt;
  try {
    return books_->otherHolder(*job_, number);
  } catch (const BooksError& error) {
    observer_.booksFell(error.what());
    return State::Unknown;  // required: what cannot be looked up proves nothing
  }
}

void Keeper::finish(const Outcome& outcome) {
  Cause cause;
  if (!write([&] { books_->finish(*job_, outcome); }, cause)) observer_.booksFell(cause.text);
  if (!job_) return;
  job_->state = outcome.state;
  job_->verdict = outcome.verdict;
  job_->cause = outcome.cause;
  job_->isBeyondCounters = outcome.isBeyondCounters;
  if (outcome.number) job_->number = outcome.number;
}

void Keeper::told() {
  Cause cause;
  if (!write([&] { books_->told(*job_); }, cause)) observer_.booksFell(cause.text);
}

}  // namespace zentaro::till
