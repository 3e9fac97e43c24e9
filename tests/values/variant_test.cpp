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
                                           {1.5, Kind::Double},
                                           {1.5F, Kind::Single},
                                           {Currency(), Kind::Currency},
                                           {Date(), Kind::Date},
                                           {"x", Kind::Text},
                                           {u"x", Kind::Text},
                                           {Array{1, "two"}, Kind::Array},
                                           {u8"x", Kind::Text},
                                           {std::u8string(u8"x"), Kind::Text},
                                           {Object(), Kind::Object}};
  for (const auto& [value, kind] : rows) EXPECT_EQ(value.kind(), kind);
  EXPECT_EQ(Variant(std::uint8_t{200}).int16(), 200);
  EXPECT_EQ(Variant(-3000000000LL).number(), -3e9);
  for (const Variant& text :
       {Variant("Caf\u00E9"), Variant(u8"Caf\u00E9"), Variant(std::u8string(u8"Caf\u00E9"))})
    EXPECT_EQ(text.text(), u"Caf\u00E9");
  EXPECT_EQ(Variant(1234567.875F).single(), 1234567.875F);
  EXPECT_EQ(errorOf([] { Variant(1).text(); }), 13) << "an accessor never converts";
}

template <class... Types>
constexpr bool noneConverts = !(std::is_constructible_v<Variant, Types> || ...);
// A pointer or a character must not become True, or a number, without a word.
static_assert(noneConverts<const wchar_t*, wchar_t, char16_t, char32_t, char8_t, char, std::wstring,
                           std::u16string*, void*, const int*, std::nullptr_t, std::vector<bool>::reference>);

TEST(Arrays, AreWhatTheirBracesSay) {
  const auto shape = [](const Array& array) { return array.hasBounds() ? array.upperBound() : -2; };
  EXPECT_EQ(shape({}), -1);
  EXPECT_EQ(shape(Array()), -1);
  EXPECT_EQ(shape(Array{}), -1);
  EXPECT_EQ(shape({1}), 0);
  EXPECT_EQ(shape({u"a", u"b"}), 1);
  EXPECT_EQ(shape({Variant(Array{1, 2})}), 0) << "an array in an array";
  const Array two{1, "two"}, copy{two}, nested{two, two}, unbounded{Array::withoutBounds()};
  EXPECT_EQ(shape(copy), 1);
  EXPECT_EQ(copy.at(1).text(), u"two");
  EXPECT_EQ(nested.at(1).array().at(1).text(), u"two");
  EXPECT_EQ(shape(unbounded), -2);
}

TEST(Arrays, CheckTheirBounds) {
  const Array two{1, "two"};
  EXPECT_EQ(two.upperBound(), 1);
  EXPECT_EQ(two.at(1).text(), u"two");
  EXPECT_EQ(errorOf([&two] { two.at(2); }), 9);
  EXPECT_EQ(errorOf([&two] { two.at(-1); }), 9);

  const Array unbounded = Array::withoutBounds();
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
