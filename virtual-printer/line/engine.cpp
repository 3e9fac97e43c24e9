// Receiving, executing, answering, and what faults make of it.
#include "virtual-printer/line/engine.h"

#include <algorithm>

#include "virtual-printer/device/commands.h"

namespace virtual_printer {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds timePerPrintedLine{50};

std::string nameOf(std::uint8_t code) {
  const CommandEntry* entry = findCommand(code);
  return entry == nullptr ? "unknown" : entry->name;
}

const Fault* find(const std::vector<Fault>& strikes, Effect effect) {
  const auto found = std::ranges::find(strikes, effect, &Fault::effect);
  return found == strikes.end() ? nullptr : &*found;
}

}  // namespace

void Engine::receive(std::string_view bytes, Moment now) {
  if (isDark_) return;
  for (const Received& received : receiver_.feed(bytes)) {
    take(received, now);
    if (isDark_) receiver_ = {};
    if (isDark_) return;
  }
}

void Engine::tell(Moment now, Event event) {
  event.exchange = exchange_;
  sink_(now, event);
}

void Engine::take(const Received& received, Moment now) {
  if (const auto* ignored = std::get_if<Ignored>(&received)) {
    sink_(now, {EventKind::Noise, {}, ignored->bytes});
  } else if (std::holds_alternative<ResetSequence>(received)) {
    sink_(now, {EventKind::Reset, {}, std::string{resetBytes}});
    device_.reset();
  } else {
    answer(std::get<Command>(received), now);
  }
}

void Engine::answer(const Command& command, Moment now) {
  ++exchange_;
  tell(now, {EventKind::Command, nameOf(command.code), command.frame, command.sequence, command.code,
             command.fields});
  const std::vector<Fault> strikes = faults_.strike(command.code, !previousFrame_.empty());
  for (const Fault& fault : strikes) tell(now, {EventKind::Fault, describe(fault)});
  if (const Fault* cut = find(strikes, Effect::PowerCut)) return cutPower(*cut, now);
  if (const Fault* gone = find(strikes, Effect::HangUp)) return hangUp(*gone, now);
  if (find(strikes, Effect::LoseCommand) != nullptr) return;
  const std::size_t linesBefore = device_.roll().printedLines();
  const Answer given = execute(command, strikes, now);
  tell(now, {EventKind::Answer,
             nameOf(command.code),
             {},
             command.sequence,
             command.code,
             given.fields,
             given.printerStatus,
             given.fiscalStatus});
  const std::string frame = encodeAnswer(command, given);
  const std::string sent = corrupted(frame, strikes, previousFrame_);
  previousFrame_ = frame;
  if (sent.empty()) return;
  deliver(sent, strikes, paceOf(command, device_.roll().printedLines() - linesBefore), now);
}

Answer Engine::execute(const Command& command, const std::vector<Fault>& strikes, Moment now) {
  device_.conditions() = conditionsOf(strikes);
  const bool wasRequired = device_.conditions().closingRequired;
  Answer given = device_.execute(command, now.local);
  if (wasRequired && !device_.conditions().closingRequired) faults_.clear(Effect::DayChange);
  return given;
}

// A printer works on one command at a time: an answer never overtakes what is still to be sent.
void Engine::deliver(const std::string& frame, const std::vector<Fault>& strikes, Pace pace, Moment now) {
  const milliseconds start = outbox_.empty() ? now.steady : std::max(now.steady, outbox_.back().at);
  for (const Chunk& chunk : schedule(frame, strikes, pace))
    outbox_.push_back({start + chunk.after, Output::Kind::Bytes, chunk.bytes, exchange_});
}

Pace Engine::paceOf(const Command& command, std::size_t printedLines) const {
  if (speed_ == Speed::Immediate) return {};
  return {true, lineTime(command.frame.size()) + timePerPrintedLine * static_cast<int>(printedLines)};
}

void Engine::cutPower(const Fault& fault, Moment now) {
  sink_(now, {EventKind::Power, "off"});
  isDark_ = true;
  previousFrame_.clear();
  outbox_.assign(1, {now.steady + fault.time, Output::Kind::PowerOn, {}});
}

void Engine::hangUp(const Fault& fault, Moment now) {
  outbox_.assign(
      {{now.steady, Output::Kind::HangUp, {}}, {now.steady + fault.time, Output::Kind::Reconnect, {}}});
}

std::vector<Output> Engine::due(Moment now) {
  std::vector<Output> ready;
  while (!outbox_.empty() && outbox_.front().at <= now.steady) {
    if (outbox_.front().kind == Output::Kind::PowerOn) {
      isDark_ = false;
      sink_(now, {EventKind::Power, "on"});
      device_.start(now.local);
    } else {
      ready.push_back(std::move(outbox_.front()));
    }
    outbox_.pop_front();
  }
  return ready;
}

std::optional<milliseconds> Engine::nextDue() const {
  if (outbox_.empty()) return std::nullopt;
  return outbox_.front().at;
}

}  // namespace virtual_printer
