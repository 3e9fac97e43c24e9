// Writing the report.
#include "tools/doctor/report_file.h"

#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "base/files/paths.h"
#include "base/system/environment.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"
#include "till/books/books.h"
#include "till/words/moments.h"

namespace zentaro::tools {

using terminal::say;

namespace {

// The ids of shops are their own business, but without them nobody finds the sale again.
std::string salesText() {
  constexpr int most = 20;
  const std::string path = till::booksPath();
  if (!std::filesystem::exists(files::pathOf(path))) return say("ninguna\n", "none\n");
  std::string text;
  try {
    for (const till::Job& job : till::Books(path).latest(most))
      text += till::dayAndTime(job.accepted) + "  " + terminal::harmless(job.printer) + "  " +
              terminal::harmless(job.id) + "  " + std::string(nameOf(job.kind)) + "  " +
              std::string(nameOf(job.state)) + "  " + terminal::harmless(job.verdict) +
              (job.number ? "  " + std::to_string(*job.number) : "") + "\n";
  } catch (const std::exception& error) {
    return terminal::harmless(error.what()) + "\n";
  }
  return text;
}

}  // namespace

void writeReport(const std::string& path, const std::string& findings, const std::string& trace) {
  std::ofstream file(files::pathOf(path), std::ios::trunc);
  file << "zentaro " << ZENTARO_VERSION << ", " << system::systemText() << "\n"
       << till::isoMoment(std::time(nullptr)) << "\n"
       << system::accountText() << "\n\n"
       << terminal::plain(findings) << "\n"
       << say("Últimas ventas", "Last sales") << "\n"
       << salesText() << "\n"
       << trace;
  if (!file.flush())
    throw std::runtime_error(say("no se puede escribir \"{}\"", "\"{}\" cannot be written", {path}));
}

}  // namespace zentaro::tools
