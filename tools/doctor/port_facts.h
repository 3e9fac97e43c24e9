// What can be said about a serial port without touching its line, and what it means for the user.
#pragma once

#include <string>

namespace zentaro::tools {

struct PortFacts {
  std::string name;           // "COM1", or "--device" for a port that is named by its path alone
  std::string device;         // its path, after all links
  bool isConfigured = false;  // somebody named this port: in the settings or on the command line
  bool exists = false;
  bool isCharacterDevice = false;
  bool canReadAndWrite = false;
  std::string group;   // of the device
  std::string holder;  // "minicom (process 4711)": who else has it open, as far as this user may see
};

/// Looks at the device, and through the processes that have it open.
PortFacts examinePort(const std::string& name, const std::string& device, bool isConfigured);

struct Finding {
  bool isProblem = false;
  std::string text;    // what is the case
  std::string advice;  // what to do about it; empty when there is nothing to do
};

/// Judges the facts alone. The port is ready to be opened when it is no problem and its device exists.
Finding judgePort(const PortFacts& facts);

}  // namespace zentaro::tools
