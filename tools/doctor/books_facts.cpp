// Looking into the books.
#include "tools/doctor/books_facts.h"

#include <filesystem>

#include "base/files/paths.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/books/books.h"

namespace zentaro::tools {

using terminal::say;

void judgeBooks(const std::string& path, Findings& findings) {
  std::error_code failed;
  if (!std::filesystem::exists(files::pathOf(path), failed) && !failed) {
    findings.add(path, {"no-books", false,
                        say("todavía no los hay; la primera venta los abre",
                            "there are none yet; the first sale opens them")});
    return;
  }
  try {
    const till::Books books(path);
    books.check();
    findings.add(path, {"books", false, say("en orden", "in order")});
    for (const till::Job& job : books.changedAfter(0, {.state = till::State::Unknown}))
      findings.add(path, {"unknown-sale", true,
                          say("no se sabe si la venta {} se imprimió",
                              "whether the sale {} was printed is not known", {job.id}),
                          say("mire el papel; {} o \"not-printed\" lo dice",
                              "look at the paper; {} or \"not-printed\" tells it",
                              {terminal::quoted(say("zentaro sale ARCHIVO --id ID --resolve printed",
                                                    "zentaro sale FILE --id ID --resolve printed"))})});
  } catch (const std::exception& error) {
    findings.add(path, {"bad-books", true, error.what()});
  }
}

}  // namespace zentaro::tools
