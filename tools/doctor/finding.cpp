// Findings as text and as JSON.
#include "tools/doctor/finding.h"

#include <algorithm>
#include <sstream>

#include "base/files/json.h"
#include "base/terminal/harmless.h"

namespace zentaro::tools {

using terminal::harmless;

void Findings::add(const std::string& subject, const Finding& finding) {
  rows_.push_back({subject, finding});
}

int Findings::problems() const {
  return static_cast<int>(std::ranges::count_if(rows_, [](const Row& row) { return row.finding.isProblem; }));
}

std::string Findings::text() const {
  std::string text;
  for (const auto& [subject, finding] : rows_) {
    text += (finding.isProblem ? "  ! " : "    ") + harmless(subject) + ": " + harmless(finding.text) + "\n";
    std::istringstream advice(finding.advice);
    for (std::string line; std::getline(advice, line);) text += "      -> " + harmless(line) + "\n";
  }
  return text;
}

Json Findings::json() const {
  Json all = Json::array();
  for (const auto& [subject, finding] : rows_) {
    all.push_back({{"subject", subject}, {"finding", finding.code}, {"problem", finding.isProblem}});
  }
  return all;
}

}  // namespace zentaro::tools
