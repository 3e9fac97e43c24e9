// How an answer reaches the host: what the faults and the speed of the line make of it, without clock or line.
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "virtual-printer/faults/plan.h"

namespace virtual_printer {

struct Chunk {
  std::chrono::milliseconds after{0};  // since the command has been executed
  std::string bytes;

  bool operator==(const Chunk&) const = default;
};

/// The answer frame as the faults change it; empty when it is lost.
std::string corrupted(std::string frame, const std::vector<Fault>& strikes, const std::string& previousFrame);

struct Pace {
  bool isRealtime = false;               // as fast as 9600 baud
  std::chrono::milliseconds working{0};  // wait bytes are sent so long
};

/// The frame in the order and at the times of its arrival, wait bytes included.
std::vector<Chunk> schedule(const std::string& frame, const std::vector<Fault>& strikes, Pace pace);

/// The time that so many bytes take at 9600 baud, ten bits each.
std::chrono::milliseconds lineTime(std::size_t bytes);

}  // namespace virtual_printer
