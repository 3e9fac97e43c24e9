// All measurements, or those that are named; "short" takes a tenth of the repetitions. Fails when a figure is above its limit.
#include <algorithm>
#include <array>
#include <cstdio>
#include <span>
#include <string_view>
#include <vector>

#include "figures.h"
#include "sections.h"

int main(int count, char** words) {
  struct Section {
    std::string_view name;
    void (*measure)(bool isShort);
  };
  constexpr std::array sections{
      Section{"exchange", bench::measureExchange}, Section{"waiting", bench::measureWaiting},
      Section{"frames", bench::measureFrames},     Section{"sale", bench::measurePacedSale},
      Section{"programs", bench::measurePrograms}, Section{"growth", bench::measureGrowth},
      Section{"books", bench::measureBooks}};
  bool isShort = false;
  std::vector<const Section*> wanted;
  for (const std::string_view word : std::span(words + 1, words + count)) {
    const auto named =
        std::find_if(sections.begin(), sections.end(), [&](const Section& s) { return s.name == word; });
    if (named != sections.end()) {
      wanted.push_back(&*named);
    } else if (word == "short") {
      isShort = true;
    } else {
      std::fprintf(stderr, "there is no measurement \"%s\"\n", word.data());
      return 2;
    }
  }
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  for (const Section& section : sections)
    if (wanted.empty() || std::find(wanted.begin(), wanted.end(), &section) != wanted.end())
      section.measure(isShort);
  const bench::Verdict verdict = bench::verdict();
  std::printf("%d passed, %d failed\n", verdict.passed, verdict.failed);
  return verdict.failed == 0 ? 0 : 1;
}
