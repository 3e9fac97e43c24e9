// What a setting is in termios: tables that are read in both directions.
#include "platform/posix/terminal_settings.h"

#include <termios.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <optional>
#include <utility>

namespace zentaro::posix {
namespace {

static_assert(sizeof(termios) <= sizeof(LineSettings::native));

constexpr tcflag_t softwareFlow = IXON | IXOFF | IXANY;
constexpr tcflag_t inputFlags = IGNBRK | BRKINT | PARMRK | ISTRIP | INLCR | IGNCR | ICRNL | softwareFlow;
constexpr tcflag_t localFlags = ECHO | ECHONL | ICANON | ISIG | IEXTEN;
constexpr tcflag_t parityFlags = PARENB | PARODD | CMSPAR;
constexpr tcflag_t controlFlags = CSIZE | parityFlags | CSTOPB | CRTSCTS | CLOCAL | CREAD;

constexpr std::array<std::pair<std::uint32_t, speed_t>, 12> rates{{{300, B300},
                                                                   {600, B600},
                                                                   {1200, B1200},
                                                                   {2400, B2400},
                                                                   {4800, B4800},
                                                                   {9600, B9600},
                                                                   {19200, B19200},
                                                                   {38400, B38400},
                                                                   {57600, B57600},
                                                                   {115200, B115200},
                                                                   {230400, B230400},
                                                                   {460800, B460800}}};
constexpr std::array<std::pair<char, tcflag_t>, 5> parities{{{'N', 0},
                                                             {'O', PARENB | PARODD},
                                                             {'E', PARENB},
                                                             {'M', PARENB | PARODD | CMSPAR},
                                                             {'S', PARENB | CMSPAR}}};
constexpr std::array<std::pair<std::uint8_t, tcflag_t>, 4> sizes{{{5, CS5}, {6, CS6}, {7, CS7}, {8, CS8}}};

template <class Table, class Value>
auto nativeOf(const Table& table, Value value) -> std::optional<decltype(table[0].second)> {
  const auto found = std::ranges::find(table, value, [](const auto& row) { return row.first; });
  if (found == table.end()) return std::nullopt;
  return found->second;
}

template <class Table, class Native, class Value>
Value valueOf(const Table& table, Native native, Value other) {
  const auto found = std::ranges::find(table, native, [](const auto& row) { return row.second; });
  return found == table.end() ? other : found->first;
}

/// The termios record of a raw line with these settings; nothing when a setting has no counterpart.
std::optional<termios> rawLine(const LineSettings& settings) {
  const auto rate = nativeOf(rates, settings.baudRate);
  const auto parity = nativeOf(parities, settings.parity);
  const auto size = nativeOf(sizes, settings.dataBits);
  if (!rate || !parity || !size) return std::nullopt;

  termios line;
  std::memcpy(&line, settings.native.data(), sizeof line);
  const tcflag_t keptInput = settings.flowControl ? line.c_iflag & softwareFlow : 0;
  const tcflag_t keptControl = settings.flowControl ? line.c_cflag & CRTSCTS : 0;
  ::cfmakeraw(&line);
  // A break would else arrive as a NUL, which a checksum by addition cannot see.
  line.c_iflag = (line.c_iflag & ~softwareFlow) | keptInput | IGNBRK;
  line.c_cflag = (line.c_cflag & ~controlFlags) | keptControl | *parity | *size | CLOCAL | CREAD;
  if (settings.stopBits == 2) line.c_cflag |= CSTOPB;
  line.c_cc[VMIN] = 0;
  line.c_cc[VTIME] = 0;
  ::cfsetispeed(&line, *rate);
  ::cfsetospeed(&line, *rate);
  return line;
}

bool isSameLine(const termios& a, const termios& b) {
  return ((a.c_iflag ^ b.c_iflag) & inputFlags) == 0 && ((a.c_oflag ^ b.c_oflag) & OPOST) == 0 &&
         ((a.c_lflag ^ b.c_lflag) & localFlags) == 0 && ((a.c_cflag ^ b.c_cflag) & controlFlags) == 0 &&
         a.c_cc[VMIN] == b.c_cc[VMIN] && a.c_cc[VTIME] == b.c_cc[VTIME] &&
         ::cfgetospeed(&a) == ::cfgetospeed(&b);
}

}  // namespace

bool readLineSettings(int descriptor, LineSettings& settings) {
  termios line;
  if (::tcgetattr(descriptor, &line) < 0) return false;
  settings.baudRate = valueOf(rates, ::cfgetospeed(&line), std::uint32_t{0});
  settings.parity = valueOf(parities, line.c_cflag & parityFlags, 'N');
  settings.dataBits = valueOf(sizes, line.c_cflag & CSIZE, std::uint8_t{8});
  settings.stopBits = (line.c_cflag & CSTOPB) != 0 ? 2 : 1;
  settings.flowControl = (line.c_iflag & softwareFlow) != 0 || (line.c_cflag & CRTSCTS) != 0;
  std::memcpy(settings.native.data(), &line, sizeof line);
  return true;
}

bool applyLineSettings(int descriptor, const LineSettings& settings) {
  const auto wanted = rawLine(settings);
  if (!wanted) {
    errno = EINVAL;
    return false;
  }
  termios taken;
  if (::tcsetattr(descriptor, TCSANOW, &*wanted) < 0 || ::tcgetattr(descriptor, &taken) < 0) return false;
  if (isSameLine(*wanted, taken)) return true;
  errno = EINVAL;  // tcsetattr() is content when the device took any part of it
  return false;
}

}  // namespace zentaro::posix
