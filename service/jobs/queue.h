// Which of a printer's jobs begins next, and which have waited too long.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "base/system/uptime.h"
#include "till/books/job.h"

namespace zentaro::service {

/// The jobs of one printer that may wait.
inline constexpr std::size_t longestQueue = 100;

/// Whether the job may no longer begin: its patience is over, or nobody can say how long it has waited, since the
/// computer was started again meanwhile. Required: nobody's clock prints last night's jobs in the morning.
bool isExpired(const till::Job& job, const system::Uptime& now);

/// A job that waits, in the order of acceptance.
struct Waiting {
  bool isClosing = false;
  bool isHeld = false;      // a Z while a job of the machine is unknown: it would destroy the evidence
  bool wasRefused = false;  // at its opening
  bool isDue = true;        // to be tried again, when it was refused
};

/// Its index; nothing while all have to wait. A job that was refused holds back those behind it, but no closing: a
/// Z may be what the printer asks for. What is held holds back nobody.
std::optional<std::size_t> pick(std::span<const Waiting> queue);

}  // namespace zentaro::service
