// What the descriptions say of each member is what it does, and the pages that repeat it are not stale.
#include "call/reference.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "automation/automation_error.h"
#include "automation/conversions.h"
#include "common/show.h"
#include "common/signatures.h"
#include "interface/library.h"
#include "support/line.h"
#include "tools-call/program.h"

namespace zentaro::tools {
namespace {

using testing::contains;
using zentaro::testing::FakeLine;
using zentaro::testing::FakePlatform;

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
    bool isSent = false;
  };
  /// Calls the member on a new printer object, every argument being `value`.
  Called call(const Member& member, bool isPortOpen, const Variant& value) {
    const Object object = createObject("CZentaro");
    auto& printer = *static_cast<CZentaro*>(object.instance());
    printer.CommPort = 1;
    printer.PortOpen(isPortOpen);
    std::vector<Variant> arguments(member.parameters.size(), value);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (member.parameters[i].type.kind == ValueType::Array) arguments[i] = Array{value};
    }
    line.written.clear();
    int outcome = ENVERR_OK;
    try {
      const Variant result = object.call(member.name, arguments);
      outcome = member.returnsOutcome() ? toInt32(result) : printer.nEnvironmentError;
    } catch (const AutomationError& error) {
      EXPECT_EQ(member.name, "response") << error.what();  // there is no answer yet
    }
    return {outcome, printer.nLastCommand, !line.written.empty()};
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

TEST_F(Descriptions, NameTheCommandsThatAreSent) {
  int named = 0;
  forEachMethod([&](const Member& member) {
    const Called called = call(member, true, valid(member));
    EXPECT_EQ(called.isSent, !member.effect.sends.empty());
    if (!member.effect.sends.starts_with("0x")) return;
    EXPECT_TRUE(contains(std::string(member.effect.sends), "0x" + hexWord(called.command).substr(4)))
        << called.command;
    ++named;
  });
  EXPECT_EQ(named, 36);
}

TEST_F(Descriptions, TellTheOutcomes) {
  forEachMethod([&](const Member& member) {
    const unsigned outcomes = member.effect.outcomes;
    EXPECT_EQ(call(member, true, valid(member)).outcome == ENVERR_COMM, (outcomes & exchanges) != 0);
    const Called closed = call(member, false, valid(member));
    const bool isRefused = (outcomes & checksPort) != 0;
    EXPECT_EQ(closed.outcome == ENVERR_DEVICE, isRefused && member.returnsOutcome());
    EXPECT_TRUE(!isRefused || closed.command == 0) << "nothing is built for a closed port";
    EXPECT_EQ(call(member, true, 99).outcome == ENVERR_BADARG, (outcomes & checksArgument) != 0);
  });
}

TEST_F(Descriptions, ExplainEveryParameter) {
  for (const ClassDescription* description : libraryClasses()) {
    for (const Member& member : description->members) {
      EXPECT_FALSE(member.help.empty()) << member.name;
      for (const Parameter& parameter : member.parameters)
        EXPECT_FALSE(parameter.note.empty()) << member.name;
    }
  }
}

class Pages : public testing::Shell {};

TEST_F(Pages, OfTheReferenceAreWhatTheDescriptionsSay) {
  EXPECT_EQ(contents(ZENTARO_SOURCES "/docs/reference.md"), referencePage())
      << "stale: run \"zentaro members --markdown > docs/reference.md\"";
}

TEST_F(Pages, OfTheManualExplainEverySubcommand) {
  const std::string page = contents(ZENTARO_SOURCES "/docs/man/zentaro.1");
  std::istringstream commands(
      run("zentaro --help | sed -n '/^Subcommands:/,$ s/^  \\([a-z]*\\) .*/\\1/p'").output);
  int count = 0;
  for (std::string name; std::getline(commands, name); ++count) {
    EXPECT_TRUE(contains(page, "\n\\fB" + name) || contains(page, "\n.B " + name + "\n")) << name;
    EXPECT_EQ(run("zentaro " + name + " --help").status, 0) << name;
  }
  EXPECT_GE(count, 7);
}

TEST_F(Pages, OfTheShellCompleteCommandsMembersAndSettings) {
  const auto completed = [](const std::string& words) {
    return run("bash -c 'source " ZENTARO_SOURCES "/tools/completion/zentaro.bash; COMP_WORDS=(" + words +
               "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zentaro; echo \"${COMPREPLY[*]}\"'")
        .output;
  };
  EXPECT_EQ(completed("zentaro mem"), "members\n");
  EXPECT_EQ(completed("zentaro call --t"), "--timeout\n");
  EXPECT_EQ(completed("zentaro call --port 1 RegistrarD"), "RegistrarDescuento RegistrarDescuentoExt\n");
  EXPECT_EQ(completed("zentaro settings s"), "set\n");
  EXPECT_EQ(completed("zentaro settings get COM"), "COM1 COM2 COM3 COM4 COM5 COM6 COM7 COM8\n");
  EXPECT_EQ(completed("zentaro call --device x"), "\n") << "bash completes files itself";
}

}  // namespace
}  // namespace zentaro::tools
