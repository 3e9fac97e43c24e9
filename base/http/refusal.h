// What the server refuses by itself, in words.
#pragma once

#include <string>

namespace zentaro::http {

/// What is wrong with the request and what to do, in the language of the program.
std::string refusalText(int status);

}  // namespace zentaro::http
