// Members by name, on a small class described by hand.
#include <gtest/gtest.h>

#include <array>
#include <memory>

#include "automation/conversions.h"
#include "automation/description.h"
#include "interface/library.h"
#include "support/values.h"

namespace zentaro::late_binding_test {

using testing::errorOf;
using Arguments = std::span<Variant>;

struct Counter {
  int count = 0;
  Object partner;
  std::vector<Variant> received;
};

Counter& self(void* instance) { return *static_cast<Counter*>(instance); }

// Keeps what arrives, changes both arguments, and raises when it is told to.
Variant add(void* instance, Arguments arguments) {
  self(instance).received.assign(arguments.begin(), arguments.end());
  arguments[0] = 100;
  arguments[1] = u"changed";
  if (arguments[2].is(Variant::Kind::Missing)) arguments[2] = u"changed";
  if (arguments[2].is(Variant::Kind::Boolean)) throw AutomationError(ErrorNumber::DivisionByZero);
  return u"done";
}

constexpr ParameterList addParameters = {
    {"amount", {ValueType::Variant}, Passing::ByReference},
    {"note", {ValueType::Variant}, Passing::ByValue, {Default::Kind::Text, "R"}},
    {"fail", {ValueType::Variant}, Passing::ByReference, {Default::Kind::Missing}},
};
Variant count(void* instance, Arguments) { return self(instance).count; }
Variant setCount(void* instance, Arguments arguments) {
  return self(instance).count = toInt32(arguments.back());
}
Variant partner(void* instance, Arguments) { return self(instance).partner; }
Variant setPartner(void* instance, Arguments arguments) {
  return self(instance).partner = arguments.back().object();
}

constexpr Member members[] = {
    {"Count", Access::Get, {}, {ValueType::Int32}, "", count},
    {"Count", Access::Let, {}, {}, "", setCount},
    {"Partner", Access::Get, {}, {ValueType::Object}, "", partner},
    {"Partner", Access::Set, {}, {}, "", setPartner},
    {"Add", Access::Call, addParameters, {ValueType::Text}, "", add},
};
constexpr ClassDescription description = {"Counter", "_Counter", "", members, nullptr};

class LateBinding : public ::testing::Test {
 protected:
  std::shared_ptr<Counter> counter = std::make_shared<Counter>();
  Object object{description, counter};
};

TEST_F(LateBinding, FindsMembersWithoutRegardToCase) {
  EXPECT_EQ(object.memberId("pARTNER"), 2);
  object.put("count", 7);
  EXPECT_EQ(object.get("COUNT").int32(), 7);
  for (const char* name : {"Coun", "", "Add2"})
    EXPECT_EQ(errorOf([&] { object.memberId(name); }), 438) << name;
}

TEST_F(LateBinding, AssignsByLetOrSetWhateverThePropertyHas) {
  object.put("Partner", object);
  EXPECT_EQ(object.get("Partner").object(), object);
  EXPECT_EQ(counter.use_count(), 3);
  counter->partner = {};
  Variant value = 3;
  object.invoke(0, Access::Set, {&value, 1});
  EXPECT_EQ(counter->count, 3);
  EXPECT_EQ(errorOf([&] { object.put("Partner", 1); }), 13) << "the Set itself refuses what is no object";
}

TEST_F(LateBinding, FillsInWhatIsLeftOutAndWritesBackWhatWasGivenByReference) {
  std::array<Variant, 3> arguments = {5, Variant::missing(), Variant::missing()};
  EXPECT_EQ(object.call("Add", std::span(arguments).first(2)).text(), u"done");
  ASSERT_EQ(counter->received.size(), 3U);
  EXPECT_EQ(counter->received[0].int32(), 5);
  EXPECT_EQ(counter->received[1].text(), u"R");
  EXPECT_TRUE(counter->received[2].is(Variant::Kind::Missing));
  EXPECT_EQ(arguments[0].int32(), 100);
  EXPECT_TRUE(arguments[1].is(Variant::Kind::Missing));
  object.call("Add", arguments);
  EXPECT_TRUE(arguments[2].is(Variant::Kind::Missing)) << "what was left out stays so";
  arguments = {5, u"mine", true};
  EXPECT_EQ(errorOf([&] { object.call("Add", arguments); }), 11);
  EXPECT_EQ(arguments[0].int32(), 100) << "also when the member raises";
  EXPECT_EQ(arguments[1].text(), u"mine");
}

TEST_F(LateBinding, CountsTheArguments) {
  std::array<Variant, 4> four;
  EXPECT_EQ(errorOf([&] { object.call("Add", four); }), 450);
  EXPECT_EQ(errorOf([&] { object.call("Add", {}); }), 450);
  std::array<Variant, 1> missing = {Variant::missing()};
  EXPECT_EQ(errorOf([&] { object.invoke(0, Access::Let, {}); }), 450);
  EXPECT_EQ(errorOf([&] { object.invoke(0, Access::Get, missing); }), 450);
  EXPECT_TRUE(counter->received.empty());
  // A parameter that cannot be left out takes the omitted value as it is.
  object.call("Add", missing);
  EXPECT_TRUE(counter->received[0].is(Variant::Kind::Missing));
}

TEST_F(LateBinding, RefusesAnAccessThatTheMemberDoesNotHave) {
  EXPECT_EQ(errorOf([&] { object.get("Add"); }), 438);
  EXPECT_EQ(errorOf([&] { object.put("Add", 1); }), 438);
  EXPECT_EQ(errorOf([&] { object.call("Count", {}); }), 438);
  EXPECT_EQ(errorOf([&] { object.invoke(5, Access::Call, {}); }), 438);
  EXPECT_EQ(errorOf([&] { object.invoke(-1, Access::Call, {}); }), 438);
}

TEST_F(LateBinding, NeedsAnObject) {
  EXPECT_EQ(errorOf([] { Object().get("Count"); }), 91);
  EXPECT_EQ(errorOf([] { Object().invoke(0, Access::Get, {}); }), 91);
}

TEST(Classes, AreCreatedByTheirNameAlone) {
  EXPECT_EQ(createObject("zentaro.STATUShasar").description().name, "statusHASAR");
  EXPECT_EQ(createObject("statusHASAR").description().name, "statusHASAR");
  for (const char* name :
       {"", "Zentaro.", "ZentaroxstatusHASAR", "Other.statusHASAR", "statusN", "Zentaro.ResultadoCierre"})
    EXPECT_EQ(errorOf([name] { createObject(name); }), 429) << name;
}

TEST(Defaults, AreTheValuesOfOmittedParameters) {
  EXPECT_EQ(Default{Default::Kind::Zero}.value().int16(), 0);
  EXPECT_EQ(Default{Default::Kind::EmptyText}.value().text(), u"");
  EXPECT_TRUE(Default{Default::Kind::True}.value().boolean());
}

}  // namespace zentaro::late_binding_test
