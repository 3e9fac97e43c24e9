// Devices, one after the other: asked, told, and brought into the settings. Nothing is changed without a yes.
#pragma once

#include <string>
#include <vector>

#include "base/files/json.h"
#include "tools/setup/discovery.h"
#include "tools/setup/questions.h"

namespace zentaro::tools {

struct SetupOptions {
  std::vector<std::string> devices;
  bool isYes = false, isJson = false, wantsTestSheet = false;
  std::string reportFile;
};

/// One run: what is said, asked and done, and what of it goes into the report.
class Setup {
 public:
  explicit Setup(const SetupOptions& options) : options_(options) {}

  int run();

 private:
  std::vector<SerialDevice> devices() const;
  Questions questions() const;
  void tell(const std::string& text);
  void examine(const SerialDevice& device);
  void give(const Discovery& found);
  void givePort(const Discovery& found, const std::string& name);
  void giveGroup(const Discovery& found);
  void giveName(const Discovery& found, const std::string& name);
  void printSheet(const Discovery& found);
  void report();
  void execute(const std::vector<std::string>& words, const std::string& question);

  const SetupOptions& options_;
  std::string page_;
  Json json_ = Json::array();
  int printers_ = 0;
};

}  // namespace zentaro::tools
