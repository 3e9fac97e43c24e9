// Command lines as people in a hurry type them.
#include <gtest/gtest.h>

#include <sstream>

#include "base/system/error_text.h"
#include "base/terminal/language.h"
#include "base/terminal/nearest.h"
#include "tools/hurried_words.h"

namespace zentaro::tools::hurried_test {

std::string meant(const std::string& line) {
  std::istringstream words(line);
  std::string text;
  for (const std::string& word : meantWords({std::istream_iterator<std::string>(words), {}}))
    text += (text.empty() ? "" : " ") + word;
  return text;
}

TEST(HurriedWords, AreUnderstood) {
  for (const auto& [typed, understood] : std::initializer_list<std::pair<const char*, const char*>>{
           {"status --puerto 1", "status --port 1"},
           {"sale v.json --puerto=2", "sale v.json --port=2"},
           {"--port 1 status", "status --port 1"},
           {"--lang es --port 1 --virtual status --json", "--lang es status --port 1 --virtual --json"},
           {"--device=/dev/x doctor", "doctor --device=/dev/x"},
           {"status COM1", "status --port 1"},
           {"status com8 --json", "status --port 8 --json"},
           {"doctor /dev/ttyUSB0", "doctor --device /dev/ttyUSB0"},
           {"doctor ttyUSB0", "doctor --device /dev/ttyUSB0"},
           {"cierre z 1", "cierre z --port 1"},
           {"sale 1 COM2 --id 3", "sale 1 --port 2 --id 3"},
           {"sale --id 5 venta.json tcp://caja:9100", "sale --id 5 venta.json --device tcp://caja:9100"},
           {"estado", "status"},
           {"vender venta.json", "sale venta.json"},
           {"settings set COM1 /dev/x", "settings set COM1 /dev/x"},
           {"call RecibirPago 5", "call RecibirPago 5"},
           {"status --timeout 5", "status --timeout 5"},
           {"doctor --report 1", "doctor --report 1"},
           {"status COM9", "status COM9"},
           {"--version", "--version"},
           {"--port", "--port"},
           {"", ""},
       })
    EXPECT_EQ(meant(typed), understood);
}

TEST(Nearest, IsTheWordThatWasMeant) {
  const std::vector<std::string> keys{"TimeOutZT", "DebugZT", "COM1", "COM2"};
  for (const auto& [typed, found] :
       std::initializer_list<std::pair<const char*, const char*>>{{"timeout", "TimeOutZT"},
                                                                  {"COM2", "COM2"},
                                                                  {"com1", "COM1"},
                                                                  {"COM7", "COM1"},
                                                                  {"DebgZT", "DebugZT"},
                                                                  {"x", ""},
                                                                  {"Puerto", ""}})
    EXPECT_EQ(terminal::nearest(typed, keys), found) << typed;
}

TEST(SystemErrors, SpeakSpanishInASpanishSentence) {
  terminal::chooseLanguage(terminal::Language::Spanish);
  const std::string spanish =
      system::errorText(EACCES) + ", " + system::errorText(ENOENT) + ", " + system::errorText(EBUSY);
  terminal::chooseLanguage(terminal::Language::English);
  EXPECT_EQ(spanish, "permiso denegado, no existe, lo tiene otro programa");
  EXPECT_EQ(system::errorText(EACCES), "Permission denied");
}

}  // namespace zentaro::tools::hurried_test
