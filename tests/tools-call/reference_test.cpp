// What the descriptions say of each member is what it does, and the pages that repeat it are not stale.
#include "tools/members/reference.h"

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
using testing::shown;

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

/// An argument that goes into a field in this way, and the field that it must give.
struct Sample {
  Encoding encoding;
  Variant argument;
  std::string field;
};
const std::u16string longText(50, u'\u00E9');
const Sample samples[] = {
    {Encoding::AsGiven, 3, "3"},
    {Encoding::Cleaned, longText, std::string(50, 'e')},
    {Encoding::ItemText, longText, std::string(50, 'e')},
    {Encoding::Start, longText, std::string(50, '\xE9')},
    {Encoding::Implied, 7, "7"},
    {Encoding::Day, Date{45366.5}, "240315"},
    {Encoding::Time, Date{45366.5}, "120000"},
    {Encoding::Digits8, 7, "00000007"},
    {Encoding::Amount, 1500, "1,500.00"},
    {Encoding::ShortDate, Date{45366.5}, "15/03/2024"},
    {Encoding::Letter, u"n", "N"},
};
const Sample& sampleOf(Encoding encoding) { return *std::ranges::find(samples, encoding, &Sample::encoding); }
std::string shownCommand(const SentCommand& command) {
  std::string text = testing::shownCode(static_cast<char>(command.code));
  for (const auto& [encoding, source, size] : command.fields) {
    std::string field = encoding == Encoding::Constant ? std::string(source) : sampleOf(encoding).field;
    if (encoding == Encoding::Implied) field.append(static_cast<std::size_t>(size), '0');
    if (field.size() == 50)
      field.resize(static_cast<std::size_t>(size + (encoding == Encoding::ItemText ? 20 : 0)));
    text += '|' + (field.empty() ? "~" : utf8(windows1252().text(field)));
  }
  return text;
}

TEST_F(Descriptions, NameTheCommandsAndFieldsThatAreSent) {
  forEachMethod([&](const Member& member) {
    const auto& commands = member.effect.commands;
    EXPECT_EQ(call(member, true, valid(member)).isSent, member.effect.sends());
    std::set<std::string> described, sent;
    for (const SentCommand& command : commands) described.insert(shownCommand(command));
    for (int round = 0; round < 9 && !commands.empty(); ++round) {
      // The parameters that no field is made of take 0, 1 and 2, each with each.
      std::vector<Variant> arguments{round % 3, round / 3, 0, 0, 0, 0};
      arguments.resize(member.parameters.size());
      for (std::size_t i = 0; i < arguments.size(); ++i) {
        for (const SentCommand& command : commands) {
          for (const auto& [encoding, source, size] : command.fields) {
            if (source == member.parameters[i].name) arguments[i] = sampleOf(encoding).argument;
          }
        }
      }
      if (member.name == "CerrarComprobante" && round == 8) arguments[0] = u"";
      if (commands[0].code == 0xA0) line.answer({{"<STX>\"x<FS>0<FS>0<ETX>0000"}});
      call(member, true, arguments);
      for (const std::string& frame : line.written) sent.insert(shown(frame));
    }
    EXPECT_EQ(sent, described);
  });
}

TEST_F(Descriptions, TellTheOutcomes) {
  forEachMethod([&](const Member& member) {
    const unsigned outcomes = member.effect.outcomes;
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
      if (!member.effect.sendsOther.empty()) phrases.insert(member.effect.sendsOther);
      for (const Parameter& parameter : member.parameters) phrases.insert(parameter.note);
      for (const SentCommand& command : member.effect.commands)
        if (!command.when.empty()) phrases.insert(command.when);
    }
  }
  for (const SettingKey& setting : allSettings) phrases.insert(setting.meaning);
  EXPECT_FALSE(phrases.contains(""));
  for (const std::string_view phrase : phrases) {
    terminal::chooseLanguage(terminal::Language::Spanish);
    const std::string spanish(inLanguage(phrase));
    terminal::chooseLanguage(terminal::Language::English);
    EXPECT_NE(spanish, inLanguage(phrase)) << phrase;
  }
}

class Pages : public testing::Shell {};

TEST_F(Pages, OfTheReferenceAreWhatTheDescriptionsSay) {
  EXPECT_EQ(testing::contents(ZENTARO_SOURCES "/docs/reference.md"), referencePage())
      << "stale: run \"zentaro members --markdown > docs/reference.md\"";
  terminal::chooseLanguage(terminal::Language::Spanish);
  const std::string spanish = referencePage();
  terminal::chooseLanguage(terminal::Language::English);
  EXPECT_EQ(testing::contents(ZENTARO_SOURCES "/docs/es/referencia.md"), spanish)
      << "stale: run \"zentaro --lang es members --markdown > docs/es/referencia.md\"";
}

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
  EXPECT_EQ(completed("zentaro settings get COM"), "COM1 COM2 COM3 COM4 COM5 COM6 COM7 COM8\n");
  EXPECT_EQ(completed("zentaro call --device x"), "\n") << "bash completes files itself";
}

}  // namespace zentaro::tools::reference_test
