// The commands of the sale, and what follows from each answer.
#include "virtual-printer/line/sample_sale.h"

#include <array>
#include <utility>
#include <vector>

namespace virtual_printer {
namespace {

constexpr std::chrono::milliseconds answerTime{2000};
constexpr unsigned refusedBit = 0x8000;

struct Step {
  std::uint8_t code;
  std::vector<std::string> fields;
};

const std::array<Step, 8> steps{{
    {0x38, {"N"}},
    {0x40, {"CLIENTE DE MUESTRA", "V-12345678"}},
    {0x42, {"CAFE CON LECHE", "2000", "1250", "1600", "M"}},
    {0x42, {"PAN DULCE", "1000", "800", "800", "M"}},
    {0x44, {"", "5000", "T"}},
    {0x45, {"T"}},
    {0x44, {"", "", "C"}},  // only where it cannot go on
    {0x38, {"N"}},
}};
constexpr std::size_t closes = 5, cancels = 6, asks = 7;

std::string frameOf(const Step& step, char sequence) {
  std::string frame{stx, sequence, static_cast<char>(step.code)};
  for (const std::string& field : step.fields) frame += fs + (field.empty() ? std::string{del} : field);
  frame += etx;
  return frame + hexadecimal(byteSum(frame), checksumDigits);
}

// The answer to this command, when all of it has come and is right.
std::optional<Command> answerIn(std::string_view bytes, char sequence) {
  const std::size_t begin = bytes.find(stx), end = bytes.find(etx, begin);
  if (end == std::string_view::npos || bytes.size() < end + 1 + checksumDigits) return std::nullopt;
  const std::string_view frame = bytes.substr(begin, end + 1 - begin);
  if (hexadecimal(byteSum(frame) & 0xFFFFU, checksumDigits) != bytes.substr(end + 1, checksumDigits))
    return std::nullopt;
  Command answer = decodeCommand(frame.substr(1, frame.size() - 2));
  const bool isWhole = answer.sequence == sequence && answer.fields.size() >= 2;
  return isWhole ? std::optional{std::move(answer)} : std::nullopt;
}

// Without the two status words; an empty text where there is no such field.
std::string dataOf(const Command& answer, std::size_t index) {
  return index + 2 < answer.fields.size() ? answer.fields[index + 2] : std::string{};
}

}  // namespace

void SampleSale::cancelFirst() {
  isClearing_ = true;
  step_ = cancels;
}

std::optional<std::string> SampleSale::next(std::chrono::milliseconds now) {
  if (isSent_ && now >= deadline_) missed();
  if (end_ || isSent_) return std::nullopt;
  isSent_ = true;
  deadline_ = now + answerTime;
  received_.clear();
  sequence_ = sequence_ == del ? '!' : static_cast<char>(sequence_ + 1);
  return frameOf(steps[step_], sequence_);
}

// Bytes that ask for answerTime get it.
void SampleSale::take(std::string_view bytes, std::chrono::milliseconds now) {
  if (!isSent_ || end_) return;
  deadline_ = now + answerTime;
  received_ += bytes;
  const std::optional<Command> answer = answerIn(received_, sequence_);
  if (!answer) return;
  isSent_ = false;
  answered(*answer);
}

void SampleSale::answered(const Command& answer) {
  const bool isRefused = (std::stoul("0" + answer.fields[1], nullptr, 16) & refusedBit) != 0;
  if (step_ == asks) return statusIs(answer);
  if (step_ == cancels) {
    if (isClearing_ && isRefused) return finish(End::Refused, dataOf(answer, 0));
    step_ = std::exchange(isClearing_, false) ? 0 : asks;
    return;
  }
  if (isRefused) {
    refusal_ = dataOf(answer, 0);
    step_ = cancels;
    return;
  }
  if (step_ == 0) invoicesBefore_ = dataOf(answer, 5);
  if (step_ == closes) return finish(End::Printed, dataOf(answer, 0));
  ++step_;
}

// The day's invoices tell: a number is used by a cancelled document, too.
void SampleSale::statusIs(const Command& answer) {
  if (dataOf(answer, 5) != invoicesBefore_) return finish(End::Unanswered, dataOf(answer, 7));
  const bool isOpen = dataOf(answer, 1) != "00";
  if (isOpen && wasLost_ && refusal_.empty()) {
    wasLost_ = false;  // one cancellation is enough
    step_ = cancels;
    return;
  }
  if (!refusal_.empty()) return finish(End::Refused, refusal_);
  finish(End::NotPrinted);
}

void SampleSale::missed() {
  constexpr int mostTries = 5;
  isSent_ = false;
  if (step_ == 0 || isClearing_ || ++tries_ > mostTries) return finish(End::Unknown);
  if (step_ != cancels) wasLost_ = true;
  step_ = asks;
}

void SampleSale::finish(End end, std::string detail) {
  end_ = end;
  detail_ = std::move(detail);
}

}  // namespace virtual_printer
