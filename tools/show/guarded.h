// The last resort of a command: an error becomes a message and an exit status, never the end of the program.
#pragma once

#include <cstdlib>
#include <iostream>
#include <string>

#include "automation/automation_error.h"
#include "base/system/error_text.h"
#include "base/terminal/harmless.h"
#include "base/terminal/language.h"
#include "base/terminal/layout.h"

namespace zentaro::tools {

// Exit statuses that all commands share; a command may have more of its own above these.
inline constexpr int exitDone = 0;
inline constexpr int exitRefused = 1;  // it was tried: the outcome was not 0, or something was found wrong
inline constexpr int exitFailed = 2;   // it could not be tried

/// Why a port does not open, in the program's language, from "Error (2): CommOpen (CreateFile) - ..."; a text of another
/// form as it came.
inline std::string openingText(const std::string& text) {
  constexpr std::string_view beginning = "Error (";
  const int code = text.starts_with(beginning) ? std::atoi(text.c_str() + beginning.size()) : 0;
  if (code <= 0 || terminal::language() == terminal::Language::English)
    return text.substr(0, text.find_last_not_of("\r\n ") + 1);  // some systems end a line there
  return "el puerto no se abre: " + system::systemErrorText(code);
}

/// What `work` returns, or exitFailed with the error on standard error.
template <class Work>
int guarded(const Work& work) {
  try {
    return work();
  } catch (const AutomationError& error) {
    constexpr int cannotOpen = 40001;
    const std::string text = error.number() == cannotOpen ? openingText(error.what()) : error.what();
    std::cerr << "zentaro: " << terminal::harmlessLines(text) << " (error " << error.number() << ")\n";
    if (error.number() == cannotOpen)
      std::cerr << terminal::say("{} dice qué necesita cada puerto.\n", "{} says what each port needs.\n",
                                 {terminal::quoted("zentaro doctor")});
  } catch (const std::exception& error) {
    std::cerr << "zentaro: " << terminal::harmlessLines(error.what()) << '\n';
  }
  return exitFailed;
}

}  // namespace zentaro::tools
