// All measurements, or those that are named; "short" takes a tenth of the repetitions.
#include <array>
#include <cstdio>
#include <string_view>

#include "sections.h"

int main(int count, char** words) {
  struct Section {
    std::string_view name;
    void (*measure)(bool isShort);
  };
  constexpr std::array sections{
      Section{"exchange", bench::measureExchange}, Section{"waiting", bench::measureWaiting},
      Section{"frames", bench::measureFrames},     Section{"sale", bench::measurePacedSale},
      Section{"programs", bench::measurePrograms}, Section{"growth", bench::measureGrowth}};
  bool isShort = false, isAll = true;
  for (int i = 1; i < count; ++i) (words[i] == std::string_view("short") ? isShort = true : isAll = false);
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  for (const Section& section : sections) {
    bool isWanted = isAll;
    for (int i = 1; i < count; ++i) isWanted = isWanted || words[i] == section.name;
    if (isWanted) section.measure(isShort);
  }
}
