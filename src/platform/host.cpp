// The host application by its thread's callbacks; without one, the system's own way.
#include "platform/host.h"

#include <cstdio>
#include <utility>

#include "platform/lasting.h"
#include "platform/per_thread.h"
#include "platform/system_host.h"
#include "text/unicode.h"

namespace zentaro {
namespace {

struct Callbacks {
  std::function<void()> yield;
  std::function<void(std::u16string_view, std::u16string_view)> messageBox;
};

std::string onOneLine(std::string_view text) {
  std::string line;
  bool atLineEnd = false;
  for (const char c : text) {
    const bool isLineEnd = c == '\r' || c == '\n';
    if (!isLineEnd) line += c;
    if (isLineEnd && !atLineEnd) line += ' ';
    atLineEnd = isLineEnd;
  }
  return line;
}

class CallbackHost : public Host {
 public:
  // Both call a copy: the callback may install another one while it runs.
  void yield() override {
    if (const auto callback = perThread<Callbacks>().yield) return callback();
    yieldToSystem();
  }

  bool wantsYields() const override { return perThread<Callbacks>().yield || systemWantsYields(); }

  void errorBox(std::u16string_view title, std::u16string_view text) override {
    if (const auto callback = perThread<Callbacks>().messageBox) return callback(title, text);
    systemErrorBox(title, text);
  }
};

}  // namespace

void setYieldCallback(std::function<void()> callback) { perThread<Callbacks>().yield = std::move(callback); }

void setMessageBoxCallback(std::function<void(std::u16string_view, std::u16string_view)> callback) {
  perThread<Callbacks>().messageBox = std::move(callback);
}

Host& callbackHost() { return lasting<CallbackHost>(); }

void printErrorBox(std::u16string_view title, std::u16string_view text) {
  const std::string line = onOneLine(utf8(title) + ": " + utf8(text)) + "\n";
  std::fputs(line.c_str(), stderr);
}

}  // namespace zentaro
