// Reading the books, and a finding.
#include "tools/sale/journal.h"

#include <iostream>
#include <stdexcept>

#include "base/files/json.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/books/books.h"
#include "till/books/claims.h"
#include "till/document/content.h"
#include "till/words/job_words.h"
#include "till/words/moments.h"
#include "tools/show/guarded.h"

namespace zentaro::tools {

using terminal::say;
using till::Job;
using till::State;

namespace {

bool isUnsettled(const Job& job) { return job.state == State::Printing || job.state == State::Unknown; }

std::optional<Job> questionAbout(const till::Books& books, const till::Sale& sale, const std::string& id) {
  if (!id.empty()) {
    const std::optional<Job> job = books.find(id);
    return job && isUnsettled(*job) ? job : std::nullopt;
  }
  for (const Job& job : books.openWithDigest(till::contentDigest(sale), till::oldContentDigest(sale)))
    if (isUnsettled(job)) return job;
  return std::nullopt;
}

}  // namespace

int showJournal(bool isJson) {
  constexpr int most = 1000;
  const std::vector<Job> jobs = till::Books().latest(most);
  Json list = Json::array();
  for (const Job& job : jobs) list.push_back(till::jobJson(job));
  std::cout << (isJson ? terminal::whole(jsonPage(list)) : till::jobsText(jobs));
  return exitDone;
}

int resolve(const till::Sale& sale, const std::string& id, bool isPrinted, bool isJson) {
  till::Books books;
  const std::optional<Job> job = questionAbout(books, sale, id);
  if (!job)
    throw std::runtime_error(say("los libros no tienen ninguna duda sobre esta venta",
                                 "the books have no open question about this sale"));
  const bool isUnderWay =
      job->state == State::Printing && till::Claims(books.path()).isMachineTaken(job->before.machine);
  if (isUnderWay || !books.finding(*job, isPrinted))
    throw std::runtime_error(say("la venta se está imprimiendo ahora: espere a su veredicto",
                                 "the sale is being printed now: wait for its verdict"));
  const std::string text =
      say("Anotado en los libros: la venta de las {} {}. No se envió nada.",
          "Noted in the books: the sale of {} was {}. Nothing was sent.",
          {till::momentText(job->begun),
           isPrinted ? say("se imprimió", "printed") : say("no se imprimió", "not printed")});
  std::cout << (isJson ? terminal::whole(jsonLine({{"verdict", "resolved"},
                                                   {"number", orNull(job->number)},
                                                   {"total", nullptr},
                                                   {"igtf", nullptr},
                                                   {"change", nullptr},
                                                   {"cause", nullptr},
                                                   {"next", text},
                                                   {"virtual", false}}))
                       : text)
            << std::endl;
  return exitDone;
}

}  // namespace zentaro::tools
