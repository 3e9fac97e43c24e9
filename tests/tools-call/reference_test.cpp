// What the descriptions say of each member is what it does, and the pages that repeat it are not stale.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "base/terminal/language.h"
#include "interface/library.h"
#include "platform/setting_keys.h"
#include "support/printer_fixture.h"
#include "support/process.h"
#include "tools/show/show.h"
#include "tools/show/signatures.h"
#include "tools/show/wording.h"

namespace zentaro::tools::reference_test {

using testing::contains;
using testing::FakeLine;
using testing::FakePlatform;

/// An open port on which nobody answers, so that every exchange ends with the outcome 1.
class Descriptions : public ::testing::Test {
 protected:
  Descriptions() {
    services_.serial = &line;
    scope_ = std::make_unique<ServicesScope>(services_);
  }

  FakePlatform platform;
  FakeLine line{platform.clock};

  struct Called {
    int outcome = 0;
    std::int16_t command = 0;
  };
  /// Calls the member on a new printer object, every argument being `value`.
  Called call(const Member& member, bool isPortOpen, const Variant& value) {
    std::vector<Variant> arguments(member.parameters.size(), value);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (member.parameters[i].type.kind == ValueType::Array) arguments[i] = Array{value};
    }
    return call(member, isPortOpen, arguments);
  }
  Called call(const Member& member, bool isPortOpen, std::span<Variant> arguments) {
    const Object object = createObject("CZentaro");
    auto& printer = *static_cast<CZentaro*>(object.instance());
    printer.CommPort = 1;
    printer.PortOpen(isPortOpen);
    int outcome = ENVERR_OK;
    try {
      const Variant result = object.call(member.name, arguments);
      outcome = member.returnsOutcome() ? toInt32(result) : printer.nEnvironmentError;
    } catch (const AutomationError& error) {
      EXPECT_EQ(member.name, "response") << error.what();  // there is no answer yet
    }
    return {outcome, printer.nLastCommand};
  }

  /// A value that every parameter of the member takes.
  static Variant valid(const Member& member) {
    if (member.name == "SetDateTime") return Date{45366};
    if (member.name == "GetDeviceStatus") return u"N";
    return 1;
  }

  template <class Check>
  static void forEachMethod(const Check& check) {
    for (const Member& member : findClass("CZentaro")->members) {
      if (member.access != Access::Call) continue;
      SCOPED_TRACE(std::string(member.name));
      check(member);
    }
  }

 private:
  Services services_ = services();
  std::unique_ptr<ServicesScope> scope_;
};

TEST_F(Descriptions, TellTheOutcomes) {
  forEachMethod([&](const Member& member) {
    const unsigned outcomes = member.outcomes;
    EXPECT_EQ(call(member, true, valid(member)).outcome == ENVERR_COMM, (outcomes & exchanges) != 0);
    // The port comes before every conversion; an argument of a type of its own is converted by the call
    // itself.
    const bool mayBeNull = member.name != "AbrirGavetaN" &&
                           std::ranges::all_of(member.parameters, [](const Parameter& parameter) {
                             return parameter.type.kind == ValueType::Variant;
                           });
    const Called closed =
        call(member, false, mayBeNull && (outcomes & checksPort) != 0 ? Variant::null() : valid(member));
    const bool isRefused = (outcomes & checksPort) != 0;
    EXPECT_EQ(closed.outcome == ENVERR_DEVICE, isRefused && member.returnsOutcome());
    EXPECT_TRUE(!isRefused || closed.command == 0) << "nothing is built for a closed port";
    EXPECT_EQ(call(member, true, 99).outcome == ENVERR_BADARG, (outcomes & checksArgument) != 0);
  });
}

TEST_F(Descriptions, ExplainEveryParameterInBothLanguages) {
  std::set<std::string_view> phrases;
  for (const ClassDescription* description : libraryClasses()) {
    phrases.insert(description->help);
    for (const Member& member : description->members) {
      phrases.insert(member.help);
      for (const Parameter& parameter : member.parameters) phrases.insert(parameter.note);
    }
  }
  for (const SettingKey& setting : allSettings) phrases.insert(setting.meaning);
  EXPECT_FALSE(phrases.contains(""));
  // Fixed in Spanish by the interface.
  EXPECT_EQ(std::erase_if(
                phrases,
                [](auto text) { return text.starts_with("Si se pasa ") || text.starts_with("Establece "); }),
            2U);
  for (const std::string_view phrase : phrases) {
    terminal::chooseLanguage(terminal::Language::Spanish);
    const std::string spanish(inLanguage(phrase));
    terminal::chooseLanguage(terminal::Language::English);
    EXPECT_NE(spanish, inLanguage(phrase)) << phrase;
  }
}

class Pages : public testing::Shell {};

TEST_F(Pages, OfTheManualExplainEverySubcommand) {
  const std::string page = testing::contents(ZENTARO_SOURCES "/docs/man/zentaro.1");
  const std::size_t begin = page.find(".SH COMMANDS");
  std::set<std::string> explained, offered;
  for (const std::string& line :
       testing::split(page.substr(begin, page.find(".SH", begin + 1) - begin), '\n')) {
    const std::string word = line.substr(std::min<std::size_t>(line.size(), 3));
    const std::string name =
        word.substr(0, std::min(word.find_first_not_of("abcdefghijklmnopqrstuvwxyz"), word.size()));
    if ((line.starts_with(".B ") || line.starts_with("\\fB")) && !name.empty()) explained.insert(name);
  }
  std::istringstream commands(
      run("zentaro --help | sed -n '/^Subcommands:/,$ s/^  \\([a-z]*\\) .*/\\1/p'").output);
  for (std::string name; std::getline(commands, name);) offered.insert(name);
  EXPECT_EQ(offered, explained);
}

TEST_F(Pages, OfTheShellCompleteCommandsMembersAndSettings) {
  const auto completed = [](const std::string& words) {
    return run("bash -c 'source " ZENTARO_SOURCES "/tools/completion/zentaro.bash; COMP_WORDS=(" + words +
               "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zentaro; echo \"${COMPREPLY[*]}\"'")
        .output;
  };
  EXPECT_EQ(completed("zentaro help mem"), "members\n");
  EXPECT_EQ(completed("zentaro --lang e"), "es en\n");
  EXPECT_EQ(completed("zentaro call --ti"), "--timeout\n");
  EXPECT_EQ(completed("zentaro call --port 1 RegistrarD"), "RegistrarDescuento RegistrarDescuentoExt\n");
  EXPECT_EQ(completed("zentaro settings s"), "set\n");
  EXPECT_EQ(completed("zentaro serve token a"), "add\n");
  EXPECT_EQ(completed("zentaro serve token add --r"), "--rights\n");
  EXPECT_EQ(completed("zentaro printer t"), "tell\n");
  EXPECT_EQ(completed("zentaro printer --pap"), "--paper\n");
  EXPECT_TRUE(testing::contains(run("zentaro printer --help").output, "zentaro printer tell SOCKET LINE"));
  ::setenv("ZENTARO_LANG", "es", 1);
  EXPECT_EQ(completed("zentaro insta"), "instalar\n");
  for (const std::string of : {"", "sale", "settings", "settings set", "serve token", "serve token add"})
    EXPECT_EQ(run("zentaro " + of + " --help | grep -E '^(Options|Subcommands|Positionals|Usage):'").output,
              "")
        << of;
  ::setenv("ZENTARO_LANG", "en", 1);
  EXPECT_EQ(completed("zentaro settings get COM"), "COM1 COM2 COM3 COM4 COM5 COM6 COM7 COM8\n");
  EXPECT_EQ(completed("zentaro call --device x"), "\n") << "bash completes files itself";
}

}  // namespace zentaro::tools::reference_test
