// Words of the command line as arguments, and what is refused before a port is opened.
#include <gtest/gtest.h>

#include "automation/conversions.h"
#include "call/call_arguments.h"
#include "common/show.h"
#include "interface/library.h"

namespace zentaro::tools {
namespace {

using Kind = Variant::Kind;

TEST(Arguments, AreWhatTheyLookLike) {
  struct {
    const char* word;
    Kind kind;
    const char* shown;
  } const rows[] = {
      {"12", Kind::Int32, "12"},
      {"-5", Kind::Int32, "-5"},
      {"0", Kind::Int32, "0"},
      {"12345678901", Kind::Double, "12345678901"},
      {"12.50", Kind::Double, "12.5"},
      {"-0.5", Kind::Double, "-0.5"},
      {"1e3", Kind::Double, "1000"},
      {"true", Kind::Boolean, "True"},
      {"false", Kind::Boolean, "False"},
      {"2024-03-15", Kind::Date, "2024-03-15T00:00:00"},
      {"2024-03-15T14:05:00", Kind::Date, "2024-03-15T14:05:00"},
      {"2024-02-30", Kind::Text, "2024-02-30"},
      {"007", Kind::Text, "007"},
      {"-007", Kind::Text, "-007"},
      {"text:1,5", Kind::Text, "1,5"},
      {"1.", Kind::Text, "1."},
      {".5", Kind::Text, ".5"},
      {"+5", Kind::Text, "+5"},
      {"1 ", Kind::Text, "1 "},
      {"inf", Kind::Text, "inf"},
      {"0x10", Kind::Text, "0x10"},
      {"True", Kind::Text, "True"},
      {"", Kind::Text, ""},
      {"-", Kind::Text, "-"},
      {"text:12", Kind::Text, "12"},
      {"text:", Kind::Text, ""},
      {"J-30123456-7", Kind::Text, "J-30123456-7"},
      {"Caf\u00E9", Kind::Text, "Caf\u00E9"},
  };
  for (const auto& row : rows) {
    const Variant value = argumentOf(row.word);
    EXPECT_EQ(value.kind(), row.kind) << row.word;
    EXPECT_EQ(valueText(value), row.shown) << row.word;
  }
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
  EXPECT_EQ(refusal({"Xyz"}), "no member \"Xyz\": \"zentaro members\" lists all");
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

}  // namespace
}  // namespace zentaro::tools
