// The last resort of a command: an error becomes a message and an exit status, never the end of the program.
#pragma once

#include <iostream>

#include "automation/automation_error.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"

namespace zentaro::tools {

// Exit statuses that all commands share; a command may have more of its own above these.
inline constexpr int exitDone = 0;
inline constexpr int exitRefused = 1;  // it was tried: the outcome was not 0, or something was found wrong
inline constexpr int exitFailed = 2;   // it could not be tried

/// What `work` returns, or exitFailed with the error on standard error.
template <class Work>
int guarded(const Work& work) {
  try {
    return work();
  } catch (const AutomationError& error) {
    std::cerr << "zentaro: " << terminal::harmlessLines(error.what()) << " (error " << error.number()
              << ")\n";
    constexpr int cannotOpen = 40001;
    if (error.number() == cannotOpen)
      std::cerr << terminal::say("\"zentaro doctor\" dice qué necesita cada puerto.\n",
                                 "\"zentaro doctor\" says what each port needs.\n");
  } catch (const std::exception& error) {
    std::cerr << "zentaro: " << terminal::harmlessLines(error.what()) << '\n';
  }
  return exitFailed;
}

}  // namespace zentaro::tools
