// Writing the report.
#include "tools/doctor/report_file.h"

#include <grp.h>
#include <pwd.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "till/books/books.h"

namespace zentaro::tools {

using terminal::say;

namespace {

std::string momentText(std::time_t moment) {
  std::tm parts{};
  ::localtime_r(&moment, &parts);
  char text[sizeof "2026-01-31 10:00:00 -0400"];
  return {text, std::strftime(text, sizeof text, "%F %T %z", &parts)};
}

std::string accountText() {
  const passwd* account = ::getpwuid(::geteuid());
  std::string text = account == nullptr ? std::to_string(::geteuid()) : account->pw_name;
  std::vector<gid_t> groups(static_cast<std::size_t>(std::max(0, ::getgroups(0, nullptr))));
  if (::getgroups(static_cast<int>(groups.size()), groups.data()) < 0) groups.clear();
  groups.push_back(::getegid());
  std::ranges::sort(groups);
  groups.erase(std::unique(groups.begin(), groups.end()),
               groups.end());  // clang 14 knows no ranges::unique here
  text += ":";
  for (const gid_t id : groups) {
    const group* entry = ::getgrgid(id);
    text += " " + (entry == nullptr ? std::to_string(id) : std::string(entry->gr_name));
  }
  return text;
}

std::string systemText() {
  utsname system{};
  ::uname(&system);
  return std::string(system.sysname) + " " + system.release + " " + system.machine;
}

// The ids of shops are their own business, but without them nobody finds the sale again.
std::string salesText() {
  constexpr int most = 20;
  const std::string path = till::booksPath();
  if (!std::filesystem::exists(path)) return std::string(say("ninguna\n", "none\n"));
  std::string text;
  try {
    for (const till::Job& job : till::Books(path).latest(most))
      text += momentText(job.accepted) + "  " + terminal::harmless(job.printer) + "  " +
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
  std::ofstream file(path, std::ios::trunc);
  file << "zentaro " << ZENTARO_VERSION << ", " << systemText() << "\n"
       << momentText(std::time(nullptr)) << "\n"
       << accountText() << "\n\n"
       << findings << "\n"
       << say("Últimas ventas", "Last sales") << "\n"
       << salesText() << "\n"
       << trace;
  if (!file.flush())
    throw std::runtime_error(say("no se puede escribir \"{}\"", "\"{}\" cannot be written", {path}));
}

}  // namespace zentaro::tools
