// What the demo calls.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "automation/variant.h"

namespace zentaro::tools {

struct DemoStep {
  std::string_view member;
  std::vector<Variant> arguments;
};

struct DemoChapter {
  std::string title;
  std::vector<DemoStep> steps;
};

/// A day, on the printer with that serial number.
std::vector<DemoChapter> demoChapters(const Variant& serial);

}  // namespace zentaro::tools
