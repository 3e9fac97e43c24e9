// Values as JSON, both ways.
#include <gtest/gtest.h>

#include <limits>

#include "base/files/json.h"
#include "interface/library.h"
#include "tools/host/rpc_error.h"
#include "tools/host/values.h"

namespace zentaro::tools::values_json_test {

using Kind = Variant::Kind;

struct ValueRow {
  std::string json;
  Kind kind;
  std::string written = {};  // empty: the same
};

TEST(HostValues, AreReadAndWritten) {
  const ValueRow rows[] = {
      {R"("")", Kind::Text},
      {R"("Caf\u00e9 \ud83d\ude00")", Kind::Text, "\"Caf\u00E9 \U0001F600\""},
      {R"("a\u0000\u001c\"")", Kind::Text},
      {"0", Kind::Int32},
      {"2147483647", Kind::Int32},
      {"-2147483648", Kind::Int32},
      {"2147483648", Kind::Double, "2147483648.0"},
      {"-2147483649", Kind::Double, "-2147483649.0"},
      {"18446744073709551615", Kind::Double, "1.8446744073709552e+19"},
      {"2.0", Kind::Double},
      {"1e3", Kind::Double, "1000.0"},
      {"-0.0", Kind::Double},
      {"0.1", Kind::Double},
      {"true", Kind::Boolean},
      {"false", Kind::Boolean},
      {"null", Kind::Null},
      {R"([1,[2.0,"x"],null])", Kind::Array},
      {"[]", Kind::Array},
      {R"({"type":"empty"})", Kind::Empty},
      {R"({"type":"missing"})", Kind::Missing},
      {R"({"type":"nothing"})", Kind::Object},
      {R"({"type":"currency","value":"12.3400"})", Kind::Currency},
      {R"({"type":"currency","value":"-7.5"})", Kind::Currency, R"({"type":"currency","value":"-7.5000"})"},
      {R"({"type":"date","value":"2024-03-15T14:05:00"})", Kind::Date},
      {R"({"type":"date","value":"1850-12-31"})", Kind::Date,
       R"({"type":"date","value":"1850-12-31T00:00:00"})"},
      {R"({"type":"double","value":"NaN"})", Kind::Double},
      {R"({"type":"double","value":"-Infinity"})", Kind::Double},
  };
  ObjectTable objects;
  for (const ValueRow& row : rows) {
    const Variant value = variantOf(Json::parse(row.json), objects);
    EXPECT_EQ(value.kind(), row.kind) << row.json;
    EXPECT_EQ(jsonLine(jsonOf(value, objects)), row.written.empty() ? row.json : row.written);
  }
}

TEST(HostValues, OfTheLibraryAreWritten) {
  ObjectTable objects;
  const auto written = [&](const Variant& value) { return jsonLine(jsonOf(value, objects)); };
  EXPECT_EQ(written(std::int16_t{-7}), "-7");
  EXPECT_EQ(written(Variant(u"a\xD800z")), "\"a\uFFFDz\"") << "half of a surrogate pair";
  EXPECT_EQ(written(std::numeric_limits<double>::infinity()), R"({"type":"double","value":"Infinity"})");
  EXPECT_EQ(written(Array()), "[]") << "an array without bounds";
  const Object record = createObject("statusHASAR");
  EXPECT_EQ(written(Array{record, record}), R"([{"type":"object","class":"Zentaro.statusHASAR","object":1},)"
                                            R"({"type":"object","class":"Zentaro.statusHASAR","object":1}])");
}

TEST(HostValues, OfNoFormAreRefused) {
  const std::string rows[] = {
      R"({})",
      R"({"type":"Currency","value":"1"})",
      R"({"type":1})",
      R"({"type":"currency"})",
      R"({"type":"currency","value":12})",
      R"({"type":"currency","value":"1.23456"})",
      R"({"type":"currency","value":"922337203685477.5808"})",
      R"({"type":"date","value":"2024-02-30"})",
      R"({"type":"date","value":"2024-03-15 14:05:00"})",
      R"({"type":"date","value":"2024-03-15T24:00:00"})",
      R"({"type":"date","value":"15/03/2024"})",
      R"({"type":"double","value":"1"})",
      R"({"type":"object"})",
      R"({"type":"object","object":2})",
      R"({"type":"object","object":-1})",
      R"({"type":"object","object":-4294967295})",
      R"([[1,{"type":"object","object":4294967297}]])",
      std::string(65, '[') + std::string(65, ']'),
      std::string(100000, '[') + std::string(100000, ']'),
  };
  ObjectTable objects;
  EXPECT_EQ(jsonLine(jsonOf(createObject("statusHASAR"), objects)),
            R"({"type":"object","class":"Zentaro.statusHASAR","object":1})");
  for (const std::string& row : rows) {
    EXPECT_THROW(variantOf(Json::parse(row), objects), RpcError) << row.substr(0, 80);
  }
  EXPECT_EQ(variantOf(Json::parse(std::string(64, '[') + std::string(64, ']')), {}).kind(), Kind::Array);
}

}  // namespace zentaro::tools::values_json_test
