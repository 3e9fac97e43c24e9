// Words of the command line as arguments, and what is refused before a port is opened.
#include <gtest/gtest.h>

#include "automation/conversions.h"
#include "base/files/json.h"
#include "base/terminal/layout.h"
#include "interface/library.h"
#include "support/bytes.h"
#include "tools/call/call_arguments.h"
#include "tools/show/show.h"

namespace zentaro::tools::arguments_test {

using Kind = Variant::Kind;

// Words, with "=" before what is shown of them if that is something else.
TEST(Arguments, AreWhatTheyLookLike) {
  const std::pair<Kind, const char*> rows[] = {
      {Kind::Int32, "12 -5 0"},
      {Kind::Double, "12345678901 12.50=12.5 -0.5 1e3=1000"},
      {Kind::Boolean, "true=True false=False"},
      {Kind::Date, "2024-03-15=2024-03-15T00:00:00 2024-03-15T14:05:00"},
      {Kind::Text,
       "2024-02-30 007 -007 text:1,5=1,5 1. .5 +5 inf 0x10 True - text:12=12 text:= J-30123456-7 Café"},
  };
  for (const auto& [kind, words] : rows) {
    for (const std::string& word : testing::split(words, ' ')) {
      const std::vector<std::string> parts = testing::split(word, '=');
      const Variant value = argumentOf(parts[0]);
      EXPECT_EQ(value.kind(), kind) << word;
      EXPECT_EQ(valueText(value), parts.back()) << word;
    }
  }
  EXPECT_EQ(argumentOf("1 ").kind(), Kind::Text);
  EXPECT_EQ(argumentOf("").kind(), Kind::Text);
}

TEST(Arguments, AreCountedBeforeAPortIsOpened) {
  const auto refusal = [](const std::vector<std::string>& words) -> std::string {
    try {
      const CallRequest request = callRequest(*findClass("CZentaro"), words);
      return "takes " + std::to_string(request.arguments.size());
    } catch (const std::runtime_error& error) {
      return error.what();
    }
  };
  EXPECT_EQ(refusal({"realizarcierre", "0"}), "takes 1");
  EXPECT_EQ(refusal({"RealizarCierre", "0", "false"}), "takes 2");
  EXPECT_EQ(refusal({"RealizarCierre"}),
            "wrong number of arguments (0): RealizarCierre(nTipo: nTipoCierreFiscal, [Imprimir: Variant = "
            "True]): Int16");
  EXPECT_EQ(refusal({"CierreZ", "1"}), "wrong number of arguments (1): CierreZ(): Int16");
  EXPECT_EQ(refusal({"PrinterType"}), "takes 0");
  EXPECT_EQ(refusal({"CommPort", "1"}), "CommPort is a property: it is only read here, without arguments");
  EXPECT_EQ(refusal({"CierreY"}), "no member \"CierreY\": there is CierreZ");
  EXPECT_EQ(refusal({"Xyz"}), "no member \"Xyz\": " + terminal::quoted("zentaro members") + " lists all");
}

TEST(Values, AreShownOnOneLine) {
  EXPECT_EQ(valueText(u"a\x02\x1C\x7Fñ"), "a\\x02\\x1C\\x7F\u00F1");
  EXPECT_EQ(valueText(Array{1, Variant(), Variant::null(), Currency::fromScaled(125000)}),
            "[1, (empty), (null), 12.5000]");
  EXPECT_EQ(valueText(Object()), "(nothing)");
  const Object record = createObject("statusHASAR");
  record.put("numeroUltimaFactura", 7);
  EXPECT_EQ(valueText(record).substr(0, 32), "statusPrinter 0, statusFiscal 0,");
  EXPECT_EQ(valueJson(record)["numeroUltimaFactura"], 7);
  EXPECT_EQ(valueJson(Array{1.5, true, u"x", Variant(), Date{0}}).dump(),
            R"([1.5,true,"x",null,"1899-12-30T00:00:00"])");
}

}  // namespace zentaro::tools::arguments_test
