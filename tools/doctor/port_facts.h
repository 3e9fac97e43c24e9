// What can be said about a serial port without touching its line, and what it means for the user.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/doctor/finding.h"

namespace zentaro::tools {

struct PortFacts {
  std::string name = {};      // "COM1", or "--device" for a port that is named by its path alone
  std::string device = {};    // its path, after all links
  bool isConfigured = false;  // somebody named this port: in the settings or on the command line
  bool exists = false;
  bool isSerial = false;  // as far as can be seen without opening it
  bool canReadAndWrite = false;
  std::string group = {};    // of the device
  std::string holder = {};   // "minicom (process 4711)": who else has it open, as far as this user may see
  std::string instead = {};  // what to do when the service has it
};

/// Looks at the device, and through the processes that have it open.
PortFacts lookAtPort(const std::string& name, const std::string& device, bool isConfigured);

/// The same, and whether a service that keeps these books has it.
PortFacts examinePort(const std::string& name, const std::string& device, bool isConfigured);

/// Judges the facts alone. The port is ready to be opened when it is no problem and its device exists.
Finding judgePort(const PortFacts& facts);

/// Judges an opening that failed with this system error: each has one cause.
Finding judgeOpening(int error, const std::string& text, const PortFacts& facts);

/// Whether a device's name is written as those of the system are, and how they begin.
bool looksLikeDevice(const std::string& name);
extern const char *const deviceBeginning, *const deviceExample;
/// How to find out who has a port that is taken, where this user may not see it.
std::string whoTellsHolder();

/// A serial device of this machine.
struct SerialDevice {
  std::string path;    // "/dev/ttyUSB0"
  std::string driver;  // "ftdi_sio"; empty when the system does not say
  std::string byId;    // "/dev/serial/by-id/...", a name that stays; empty for one that is not on USB
};

/// Those with hardware behind them, as the system lists them below `root` ("" for the machine itself).
std::vector<SerialDevice> serialDevices(const std::string& root = "");

}  // namespace zentaro::tools
