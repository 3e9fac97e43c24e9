// Receiving, executing and answering.
#include "line/engine.h"

namespace printer {

void Engine::receive(std::string_view bytes, Moment now) {
  for (const Received& received : receiver_.feed(bytes)) take(received, now);
}

void Engine::take(const Received& received, Moment now) {
  if (std::holds_alternative<ResetSequence>(received)) return device_.reset();
  const auto* command = std::get_if<Command>(&received);
  if (command == nullptr) return;
  outbox_.push_back({now.steady, encodeAnswer(*command, device_.execute(*command, now.local))});
}

std::deque<Output> Engine::due(std::chrono::milliseconds now) {
  std::deque<Output> ready;
  while (!outbox_.empty() && outbox_.front().at <= now) {
    ready.push_back(std::move(outbox_.front()));
    outbox_.pop_front();
  }
  return ready;
}

std::optional<std::chrono::milliseconds> Engine::nextDue() const {
  if (outbox_.empty()) return std::nullopt;
  return outbox_.front().at;
}

}  // namespace printer
