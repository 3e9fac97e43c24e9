// A printer on the bench: a till talks to it in short lines, and time passes only when it is told to.
//
//   till.say("42 Cafe|2000|1250|1600|M")   sends command 42 with these fields; gives "2900", the data fields
//                                          of the answer, or "!03" for a refusal with this number
#pragma once

#include <gtest/gtest.h>

#include "support/bytes.h"
#include "virtual-printer/line/engine.h"
#include "virtual-printer/paper/text.h"

namespace bench {

using namespace std::chrono_literals;
using zentaro::testing::bytes;
using zentaro::testing::contains;
using zentaro::testing::occurrences;
using zentaro::testing::split;

inline constexpr virtual_printer::LocalTime afternoon =
    std::chrono::local_days{std::chrono::year{2026} / 11 / 24} + std::chrono::hours{15} +
    std::chrono::minutes{4};

inline const virtual_printer::Identity identity{{"J-12345678-9", "BODEGA LA PRUEBA", "ZPV0000007"}, 300};

class Till {
 public:
  explicit Till(virtual_printer::Books books = {},
                virtual_printer::Speed speed = virtual_printer::Speed::Immediate)
      : device{identity, std::move(books),
               [this](const virtual_printer::Books& changed) { return save(changed); }},
        engine{device, faults, speed,
               [this](const virtual_printer::Moment&, const virtual_printer::Event& event) {
                 events.push_back(event);
               }} {
    device.start(now.local);
  }

  // The raw answer to a command, after the time told, or nothing.
  std::string exchange(const std::string& line) {
    sequence = sequence == '\x7F' ? '!' : static_cast<char>(sequence + 1);
    engine.receive(zentaro::testing::commandFrame(sequence, line), now);
    return arrived();
  }

  std::string arrived() {
    std::string out;
    for (const virtual_printer::Output& output : engine.due(now)) {
      out += output.bytes;
      isHungUp = isHungUp || output.kind == virtual_printer::Output::Kind::HangUp;
    }
    return out;
  }

  std::string say(const std::string& line) {
    std::string frame = exchange(line);
    if (frame.size() < 8) return "no answer";
    std::vector<std::string> parts = split(frame.substr(0, frame.find('\x03')), '\x1C');
    printerStatus = parts.at(1);
    fiscalStatus = parts.at(2);
    parts.erase(parts.begin(), parts.begin() + 3);
    const bool isRefused = (std::stoul(fiscalStatus, nullptr, 16) & 0x8000U) != 0;
    if (!isRefused) return zentaro::testing::joined(parts, "|");
    EXPECT_EQ(parts.at(0).substr(0, 6), "ERROR ") << line;
    return "!" + parts.at(0).substr(6, 2);
  }

  // Rows of "command => expected", or of a command alone when its answer is another test's affair; several
  // commands with the same answer stand in one row, with "; " between them. A refused command must have
  // changed and printed nothing.
  void dialogue(const std::string& text) {
    for (std::string row : split(text, '\n')) {
      const std::size_t arrow = row.find(" =>");
      const bool isExpected = arrow != std::string::npos;
      const std::string expected = isExpected ? row.substr(std::min(arrow + 4, row.size())) : "";
      for (std::string command : split(row.substr(0, arrow), ';')) {
        command.erase(0, command.find_first_not_of(' '));
        if (command.empty()) continue;
        const virtual_printer::Books before = device.works().books;
        const std::size_t linesBefore = device.roll().printedLines();
        const std::string answer = say(command);
        EXPECT_EQ(answer, isExpected ? expected : answer) << command;
        if (answer[0] != '!') continue;
        EXPECT_TRUE(before == device.works().books) << command;
        EXPECT_EQ(linesBefore, device.roll().printedLines()) << command;
      }
    }
  }

  bool save(const virtual_printer::Books& books) {
    if (!isDiskFull) lastSaved = books;
    return !isDiskFull;
  }

  void wait(std::chrono::milliseconds time) { now.steady += time; }

  std::string paper() { return virtual_printer::textPaper(device.roll().sheets()); }
  std::string lastSheet() { return virtual_printer::textPaper({device.roll().sheets().back()}); }

  virtual_printer::Moment now{1000ms, afternoon};
  virtual_printer::Books lastSaved;
  std::vector<virtual_printer::Event> events;
  virtual_printer::FaultSet faults;
  virtual_printer::Device device;
  virtual_printer::Engine engine;
  bool isDiskFull = false;
  bool isHungUp = false;  // and stays so, like a port that is not opened again
  char sequence = '!';
  std::string printerStatus, fiscalStatus;
};

}  // namespace bench
