// Why a line cannot be opened, by the system's error.
#pragma once

namespace zentaro::tools {

enum class OpeningTrouble {
  NoPort,
  NoSerialDevice,
  InUse,
  NotAllowed,
  Refused,      // over TCP: the host is there, and nobody listens
  Unreachable,  // over TCP: nothing comes back
  UnknownHost,
  BadName,
  Other
};

OpeningTrouble troubleOf(int systemError);

}  // namespace zentaro::tools
