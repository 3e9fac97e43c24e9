// The console of the program: its streams, their width, its words.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zentaro::terminal {

enum class Stream { Input, Output, Errors };
/// Whether a person sits there, and not a pipe or a file.
bool isTerminal(Stream stream);
/// Of the terminal behind standard output; 0 when there is none, or it does not say.
std::size_t terminalColumns();
/// Whether the terminal behind standard output understands colours.
bool hasColours();

/// Of the account where no variable of the environment names it: "es_VE"; empty when the system does not say.
std::string accountLanguage();

/// While it lives, what the program reads and writes is UTF-8, byte by byte as it stands there.
class Utf8Console {
 public:
  Utf8Console();
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;
  ~Utf8Console();

 private:
  unsigned before_ = 0;
};

/// The words of the command line in UTF-8, with the program's name in front.
std::vector<std::string> commandLineWords(int count, char** words);

/// What main-like functions take: the words, which must outlive it, and a null pointer.
std::vector<char*> argumentVector(std::vector<std::string>& words);

/// Waits so long for a line of the standard input; true when there is one, or its end.
bool waitForInput(int milliseconds);

}  // namespace zentaro::terminal
