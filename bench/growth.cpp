// How the virtual printer's cost grows: lines of one document, and Z records in its state file.
#include <cstdio>
#include <filesystem>

#include "figures.h"
#include "measure.h"
#include "sections.h"
#include "virtual-printer/device/device.h"
#include "virtual-printer/shell/state_file.h"

namespace bench {
namespace {

using namespace virtual_printer;

class SavingPrinter {
 public:
  explicit SavingPrinter(std::size_t zRecords) : file_(path()), device_({}, books(zRecords), save()) {
    file_.save(device_.works().books);
  }
  ~SavingPrinter() {
    std::error_code ignored;
    std::filesystem::remove(path(), ignored);
    std::filesystem::remove(path() + ".lock", ignored);
  }

  /// Seconds of each line of an invoice of so many lines; of the close in `closing`.
  double lineTime(int lines, double& closing) {
    say(0x40, {"", "", "", "", "", "", ""});
    const double begin = wallSeconds();
    for (int i = 0; i < lines; ++i) say(0x42, {"CAFE", "1000", "1250", "1600", "M"});
    const double end = wallSeconds();
    say(0x44, {"", "9999999999", "T"});
    say(0x45, {"T"});
    closing = wallSeconds() - end;
    return (end - begin) / lines;
  }

 private:
  static std::string path() {
    return (std::filesystem::temp_directory_path() / "zentaro-bench-state.json").string();
  }
  static Books books(std::size_t zRecords) {
    Books books;
    for (std::size_t i = 0; i < zRecords; ++i)
      books.zRecords.push_back({static_cast<int>(i) + 1, {}, {}, {}});
    books.counters.z = static_cast<int>(zRecords);
    return books;
  }
  Device::SaveBooks save() {
    return [this](const Books& books) {
      file_.save(books);
      return true;
    };
  }
  void say(std::uint8_t code, std::vector<std::string> fields) {
    device_.execute({'!', code, std::move(fields)}, now_);
  }

  StateFile file_;
  Device device_;
  LocalTime now_{std::chrono::seconds{1'795'532'640}};
};

}  // namespace

void measureGrowth(bool isShort) {
  std::printf("the virtual printer, microseconds a line    and of payment and close\n");
  double closing = 0, least = 0;
  for (const int lines : {10, 100, 1000, 5000}) {
    if (isShort && lines > 1000) break;
    std::vector<double> times, closings;
    for (int round = 0; round < 5; ++round) {
      SavingPrinter printer(0);
      times.push_back(printer.lineTime(lines, closing) * 1e6);
      closings.push_back(closing * 1e6);
    }
    if (least == 0) least = median(times);
    expectAtMost("a line of a longer document, of one of ten", median(times) / least, 4);
    std::printf("  document of %6d lines %18.1f %18.0f\n", lines, median(times), median(closings));
  }
  for (const std::size_t records : {10U, 1000U, 4000U}) {
    if (isShort && records > 1000) break;
    SavingPrinter printer(records);
    const double time = printer.lineTime(100, closing);
    expectAtMost("a line beside a longer memory, of one beside none", time * 1e6 / least, 4);
    std::printf("  memory of %6zu Z records %16.1f %18.0f\n", records, time * 1e6, closing * 1e6);
  }
}

}  // namespace bench
