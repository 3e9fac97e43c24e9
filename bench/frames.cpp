// Building a frame of five fields and splitting an answer of 25, against code that is written for just that.
#include <array>
#include <cstdio>

#include "figures.h"
#include "measure.h"
#include "printer/answer.h"
#include "printer/frame.h"
#include "sections.h"
#include "text/code_page.h"

namespace bench {
namespace {

using zentaro::Array;
using zentaro::Variant;

volatile std::size_t sink;  // so that nothing is optimized away

std::u16string appendSum(std::u16string frame) {
  unsigned sum = 0;
  for (const char16_t c : frame) sum += zentaro::windows1252().encode(c);
  for (int shift = 12; shift >= 0; shift -= 4) frame += u"0123456789ABCDEF"[(sum >> shift) & 15];
  return frame;
}

std::u16string builtByHand(const std::array<std::u16string, 5>& fields) {
  std::u16string frame{2, u'!', u'B'};
  for (const std::u16string& field : fields) {
    frame += u'\x1C';
    if (field.empty())
      frame += u'\x7F';
    else
      frame += field;
  }
  return appendSum(std::move(frame += u'\x03'));
}

std::vector<std::u16string> splitByHand(std::u16string_view answer) {
  std::vector<std::u16string> fields;
  answer.remove_prefix(3);
  while (!answer.empty()) {
    const std::size_t end = std::min(answer.find_first_of(u"\x1C\x03"), answer.size());
    if (end > 0) fields.emplace_back(answer.substr(0, end));
    answer.remove_prefix(std::min(end + 1, answer.size()));
  }
  return fields;
}

struct Cost {
  double nanoseconds = 0, allocations = 0;
};

template <class Work>
Cost costOf(const Work& work, int times) {
  const std::uint64_t before = allocations();
  const double begin = processorSeconds();
  for (int i = 0; i < times; ++i) sink = work();
  return {(processorSeconds() - begin) / times * 1e9, static_cast<double>(allocations() - before) / times};
}

template <class Work, class Reference>
void compare(const char* name, const Work& work, const Reference& reference, double allocatedAtMost,
             bool isShort) {
  std::vector<double> ratio, time;
  Cost cost, least;
  for (int round = 0; round < 21; ++round) {
    cost = costOf(work, isShort ? 1000 : 10000);
    least = costOf(reference, isShort ? 1000 : 10000);
    ratio.push_back(cost.nanoseconds / least.nanoseconds);
    time.push_back(cost.nanoseconds);
  }
  std::printf("  %-40s %7.0f ns, %4.1f allocations (by hand %4.1f), ratio %5.2f (%.2f to %.2f)\n", name,
              median(time), cost.allocations, least.allocations, median(ratio), percentile(ratio, 0.05),
              percentile(ratio, 0.95));
  expectAtMost(name, median(ratio), 2);
  expectAtMost("its allocations", cost.allocations, allocatedAtMost);
}

}  // namespace

void measureFrames(bool isShort) {
  const std::array<std::u16string, 5> texts{u"CAFE MOLIDO         ", u"2000", u"1250", u"1600", u"M"};
  const Array fields(std::vector<Variant>(texts.begin(), texts.end()));
  std::u16string answer{2, u'!', u'9'};
  for (int i = 0; i < 25; ++i)
    answer +=
        u"\x1C"
        u"1234.56";
  answer = appendSum(answer + u"\x03");

  std::printf("frames, processor time\n");
  compare(
      "a frame of 5 fields",
      [&] { return zentaro::buildFrame(33, 0x42, fields, zentaro::windows1252()).size(); },
      [&] { return builtByHand(texts).size(); }, 1, isShort);
  compare(
      "an answer of 25 fields",
      [&] { return zentaro::checkAnswer(answer, u'!', true, zentaro::windows1252()).fields.items().size(); },
      [&] { return splitByHand(answer).size() + appendSum(answer).size(); }, 2, isShort);
}

}  // namespace bench
