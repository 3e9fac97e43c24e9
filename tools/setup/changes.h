// What a found printer still lacks on this machine: a port of the settings, a group, a name that stays.
#pragma once

#include <optional>
#include <string>

#include "platform/settings_text.h"

namespace zentaro::tools {

struct PortChoice {
  std::string name;    // "COM1"
  bool isSet = false;  // it leads to the device already
};

/// The port that leads to the device by whatever name, else the first one that has none; nothing
/// when all eight have others.
std::optional<PortChoice> portFor(const std::string& device, const SettingsText& settings);

/// The name of the device that stays when it is plugged in again: below /dev/fiscal, else /dev/serial/by-id, else the
/// path that it has. Below `root`, "" for the machine itself.
std::string lastingName(const std::string& device, const std::string& root = "");

/// Whether commands for root can be run.
bool isRoot();

/// The account for which the machine is set up: who called sudo, else the account itself.
std::string accountName();

/// Whether the account may use what the group may; root always.
bool isMember(const std::string& account, const std::string& group);

/// The file of the udev rule that comes with the program; empty where there is none.
std::string ruleOfTheProgram();

}  // namespace zentaro::tools
