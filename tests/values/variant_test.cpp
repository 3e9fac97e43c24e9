// Which kind a C++ value becomes, arrays, and the texts of errors.
#include "automation/variant.h"

#include <gtest/gtest.h>

#include "automation/conversions.h"
#include "support/values.h"

namespace zentaro::variant_test {

using testing::errorOf;
using Kind = Variant::Kind;

TEST(Variants, HaveTheKindOfTheirLiteral) {
  const std::pair<Variant, Kind> rows[] = {{{}, Kind::Empty},
                                           {Variant::null(), Kind::Null},
                                           {Variant::missing(), Kind::Missing},
                                           {true, Kind::Boolean},
                                           {short{1}, Kind::Int16},
                                           {std::uint8_t{200}, Kind::Int16},
                                           {1, Kind::Int32},
                                           {std::uint16_t{65535}, Kind::Int32},
                                           {1L, Kind::Int32},
                                           {4000000000U, Kind::Double},
                                           {1.5F, Kind::Double},
                                           {Currency(), Kind::Currency},
                                           {Date(), Kind::Date},
                                           {"x", Kind::Text},
                                           {u"x", Kind::Text},
                                           {Array{1, "two"}, Kind::Array},
                                           {Object(), Kind::Object}};
  for (const auto& [value, kind] : rows) EXPECT_EQ(value.kind(), kind);
  EXPECT_EQ(Variant(std::uint8_t{200}).int16(), 200);
  EXPECT_EQ(Variant(-3000000000LL).number(), -3e9);
  EXPECT_EQ(Variant("Caf\u00E9").text(), u"Caf\u00E9");
  EXPECT_EQ(errorOf([] { Variant(1).text(); }), 13) << "an accessor never converts";
}

TEST(Arrays, CheckTheirBounds) {
  const Array two{1, "two"};
  EXPECT_EQ(two.upperBound(), 1);
  EXPECT_EQ(two.at(1).text(), u"two");
  EXPECT_EQ(errorOf([&two] { two.at(2); }), 9);
  EXPECT_EQ(errorOf([&two] { two.at(-1); }), 9);

  EXPECT_EQ(Array(std::vector<Variant>{}).upperBound(), -1);
  const Array unbounded;
  EXPECT_EQ(errorOf([&unbounded] { unbounded.upperBound(); }), 9);
  EXPECT_EQ(errorOf([&unbounded] { unbounded.items(); }), 9);
  EXPECT_EQ(errorOf([&unbounded] { unbounded.at(0); }), 9);
}

TEST(Errors, CarryTheirFixedDescription) {
  const AutomationError overflow(ErrorNumber::Overflow);
  EXPECT_EQ(overflow.source(), u"Zentaro");
  EXPECT_STREQ(overflow.what(), "Overflow");
  EXPECT_STREQ(AutomationError(ErrorNumber::WrongArguments).what(),
               "Wrong number of arguments or invalid property assignment");
  const AutomationError own(40001, u"CZentaro.Let PortOpen", u"Sin conexi\u00F3n");
  EXPECT_EQ(own.number(), 40001);
  EXPECT_STREQ(own.what(), "Sin conexi\u00F3n");
}

TEST(Errors, OfFilesFollowTheReason) {
  const std::pair<std::errc, int> rows[] = {{std::errc::no_such_file_or_directory, 76},
                                            {std::errc::not_a_directory, 76},
                                            {std::errc::no_space_on_device, 61},
                                            {std::errc::permission_denied, 75},
                                            {std::errc::is_a_directory, 75},
                                            {std::errc::read_only_file_system, 75},
                                            {std::errc::bad_file_descriptor, 52},
                                            {std::errc::io_error, 57}};
  for (const auto& [reason, number] : rows) {
    EXPECT_EQ(fileError(std::make_error_code(reason)).number(), number);
  }
}

}  // namespace zentaro::variant_test
