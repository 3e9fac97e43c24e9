// Command lines as people in a hurry type them.
#pragma once

#include <string>
#include <vector>

namespace zentaro::tools {

/// The words as they were meant: Spanish names of subcommands and options, options of a port in front of the
/// subcommand, and a port or a device that stands there alone ("status COM1", "doctor /dev/ttyUSB0"). Words that
/// are in order stay as they are.
std::vector<std::string> meantWords(std::vector<std::string> words);

}  // namespace zentaro::tools
