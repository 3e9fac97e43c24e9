// Wire effects, each a small change of the frame or of its schedule.
#include "virtual-printer/faults/delivery.h"

#include "virtual-printer/wire/frame.h"

namespace virtual_printer {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds waitByteInterval{200};
constexpr milliseconds pieceInterval{20};
// Bytes of a disturbed line; none of them begins or ends a frame.
constexpr std::string_view junk = "\xFF\x15~\xA5\xFE";

std::string withChecksum(std::string frame, unsigned off) {
  frame.resize(frame.size() - checksumDigits);
  return frame + hexadecimal((byteSum(frame) + off) & 0xFFFFU, checksumDigits);
}

std::string withOtherSequence(std::string frame) {
  frame[1] = frame[1] == del ? '!' : static_cast<char>(frame[1] + 1);
  return withChecksum(std::move(frame), 0);
}

std::string withNoise(std::string frame, Place place) {
  return place == Place::Inside ? frame.insert(frame.size() - checksumDigits - 1, junk)
                                : std::string{junk} + frame;
}

}  // namespace

std::string corrupted(std::string frame, const std::vector<Fault>& strikes,
                      const std::string& previousFrame) {
  for (const Fault& fault : strikes) {
    if (fault.effect == Effect::LoseAnswer) return {};
    if (fault.effect == Effect::RepeatAnswer) frame = previousFrame;
  }
  for (const Fault& fault : strikes) {
    if (fault.effect == Effect::BadSequence) frame = withOtherSequence(std::move(frame));
    if (fault.effect == Effect::BadChecksum) frame = withChecksum(std::move(frame), 1);
  }
  for (const Fault& fault : strikes)
    if (fault.effect == Effect::Noise) frame = withNoise(std::move(frame), fault.place);
  for (const Fault& fault : strikes)
    if (fault.effect == Effect::Truncate) frame.resize(std::min(frame.size(), fault.bytes));
  return frame;
}

std::vector<Chunk> schedule(const std::string& frame, const std::vector<Fault>& strikes, Pace pace) {
  milliseconds start{0};
  milliseconds working = pace.working;
  std::size_t pieceSize = pace.isRealtime ? 1 : frame.size();
  milliseconds interval{0};
  for (const Fault& fault : strikes) {
    if (fault.effect == Effect::Delay) start += fault.time;
    if (fault.effect == Effect::Wait) working += fault.time;
    if (fault.effect != Effect::Pieces) continue;
    pieceSize = fault.bytes;
    interval = pieceInterval;
  }
  std::vector<Chunk> chunks;
  for (milliseconds at{0}; at < working; at += waitByteInterval) chunks.push_back({start + at, {waitByte}});
  start += working;
  for (std::size_t at = 0; at < frame.size(); at += pieceSize) {
    const auto piece = static_cast<milliseconds::rep>(at / pieceSize);
    const milliseconds paced = pace.isRealtime ? lineTime(at + 1) : milliseconds{0};
    chunks.push_back({start + piece * interval + paced, frame.substr(at, pieceSize)});
  }
  return chunks;
}

milliseconds lineTime(std::size_t bytes) {
  constexpr std::size_t bytesPerSecond = 960;
  return milliseconds{static_cast<milliseconds::rep>(bytes * 1000 / bytesPerSecond)};
}

}  // namespace virtual_printer
