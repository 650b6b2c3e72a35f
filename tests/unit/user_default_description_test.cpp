#include "probe/model/user_default_description.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <limits>

#include "probe/model/number_description.h"

namespace tarnix::tests {
namespace {

using platform::PropertyValue;
using Array = PropertyValue::Array;
using Data = PropertyValue::Data;
using Dictionary = PropertyValue::Dictionary;

std::string describe(PropertyValue value) {
  const UserDefaultDescription description = describeUserDefault(value);
  return std::string(description.valueType) + " " + description.displayValue;
}

PropertyValue text(std::string value) { return {std::move(value)}; }

PropertyValue::Date at(int year, unsigned month, unsigned day, std::chrono::milliseconds time) {
  return std::chrono::sys_days{std::chrono::year{year} / static_cast<int>(month) /
                               static_cast<int>(day)} +
         time;
}

std::string repeated(std::string_view part, int count) {
  std::string whole;
  for (int index = 0; index < count; ++index) {
    whole += part;
  }
  return whole;
}

TEST(UserDefaultDescription, NamesEachKind) {
  using namespace std::chrono_literals;
  const double notANumber = std::numeric_limits<double>::quiet_NaN();
  const double infinite = std::numeric_limits<double>::infinity();
  const std::vector<std::pair<PropertyValue, std::string>> table = {
      {text("hello"), "String hello"},
      {text(""), "String "},
      {{true}, "Bool true"},
      {{false}, "Bool false"},
      {{std::int64_t{42}}, "Int 42"},
      {{std::int64_t{0}}, "Int 0"},
      {{std::int64_t{1}}, "Int 1"},
      {{std::numeric_limits<std::int64_t>::min()}, "Int -9223372036854775808"},
      {{std::numeric_limits<std::uint64_t>::max()}, "Int 18446744073709551615"},
      {{3.0}, "Int 3"},
      {{-3.0}, "Int -3"},
      {{1e5}, "Int 100000"},
      {{1e20}, "Int 1e+20"},
      {{1.5e20}, "Double 1.5e+20"},
      {{1.5}, "Double 1.5"},
      {{-0.25}, "Double -0.25"},
      {{1e-7}, "Double 1e-07"},
      {{infinite}, "Double inf"},
      {{-infinite}, "Double -inf"},
      {{notANumber}, "Double nan"},
      {{Data{std::string(16, '\0')}}, "Data (16 bytes)"},
      {{Data{}}, "Data (0 bytes)"},
      {{at(2001, 1, 1, 0s)}, "Date 2001-01-01T00:00:00Z"},
      {{at(2026, 3, 1, 9h + 5min + 7s + 999ms)}, "Date 2026-03-01T09:05:07Z"},
      {{at(1969, 12, 31, 23h + 59min + 59s + 500ms)}, "Date 1969-12-31T23:59:59Z"},
      {{Array{{{std::int64_t{1}}, {true}, text("a\"b"), {2.0}, {0.5}}}},
       R"(Array [1,true,"a\"b",2,0.5])"},
      {{Array{}}, "Array []"},
      {{Dictionary{{{"width", {std::uint64_t{3}}}, {"a", {Array{{text("x")}}}}}}},
       R"(Dict {"width":3,"a":["x"]})"},
      {{Dictionary{}}, "Dict {}"},
      {{PropertyValue::Other{"QFont(Sans,10)"}}, "? QFont(Sans,10)"},
  };
  for (const auto& [value, expected] : table) {
    EXPECT_EQ(describe(value), expected);
  }
}

TEST(UserDefaultDescription, CountsWhatHasNoJsonForm) {
  using namespace std::chrono_literals;
  const std::vector<PropertyValue> formless = {
      {Data{"x"}},
      {at(2026, 1, 1, 0s)},
      {PropertyValue::Other{"x"}},
      {std::numeric_limits<double>::infinity()},
      {std::numeric_limits<double>::quiet_NaN()},
      text("\xff"),
      {Array{{{Dictionary{{{"deep", {Data{"x"}}}}}}}}},
  };
  for (const PropertyValue& value : formless) {
    EXPECT_EQ(describe({Array{{value, {true}}}}), "Array [2 items]");
    EXPECT_EQ(describe({Dictionary{{{"a", {true}}, {"b", {true}}, {"c", value}}}}),
              "Dict {3 keys}");
  }
}

TEST(UserDefaultDescription, CutsAfterTwoHundredCharacters) {
  EXPECT_EQ(describe(text(std::string(200, 'x'))), "String " + std::string(200, 'x'));
  EXPECT_EQ(describe(text(std::string(201, 'x'))), "String " + std::string(200, 'x') + "...");
  EXPECT_EQ(describe(text(std::string(250, 'x'))), "String " + std::string(200, 'x') + "...");
}

TEST(UserDefaultDescription, CountsCharactersAsPeopleDo) {
  // A letter with a combining accent, a flag, a family of three, and a line break of two bytes.
  for (const char* character : {"e\xcc\x81", "\xf0\x9f\x87\xa9\xf0\x9f\x87\xaa",
                                "\xf0\x9f\x91\xa8\xe2\x80\x8d\xf0\x9f\x91\xa9\xe2\x80\x8d"
                                "\xf0\x9f\x91\xa7",
                                "\r\n"}) {
    EXPECT_EQ(describe(text(repeated(character, 200))), "String " + repeated(character, 200));
    EXPECT_EQ(describe(text(repeated(character, 201))),
              "String " + repeated(character, 200) + "...");
  }
}

TEST(UserDefaultDescription, CutsLongJsonToo) {
  const std::string array = describe({Array{std::vector<PropertyValue>(150, {std::int64_t{1}})}});
  EXPECT_EQ(array, "Array [" + repeated("1,", 99) + "1...");
  const std::string dictionary = describe({Dictionary{{{"key", text(std::string(300, 'x'))}}}});
  EXPECT_EQ(dictionary, "Dict {\"key\":\"" + std::string(192, 'x') + "...");
}

TEST(UserDefaultDescription, GivesUpOnWhatIsNestedTooDeep) {
  PropertyValue value{Array{}};
  for (int level = 0; level < 600; ++level) {
    PropertyValue outer{Array{}};
    std::get<Array>(outer.value).elements.push_back(std::move(value));
    value = std::move(outer);
  }
  EXPECT_EQ(describe(std::move(value)), "Array [1 items]");
}

TEST(NumberDescription, ReadsBackAsTheSameNumber) {
  for (const double number :
       {0.1, 1.0 / 3, 9.95, 0.1 + 0.2, 123456789.125, 5e-324, 1.7976931348623157e308, 1e15, 1e16,
        9'007'199'254'740'993.0, 1e-4, 9.99e-5, -2.5e-7, 4.35}) {
    const std::string text = describeNumber(number);
    double again = 0;
    std::from_chars(text.data(), text.data() + text.size(), again);
    EXPECT_EQ(again, number) << text;
  }
}

TEST(NumberDescription, IsAsShortAsItMayBe) {
  EXPECT_EQ(describeNumber(0), "0");
  EXPECT_EQ(describeNumber(-0.0), "-0");
  EXPECT_EQ(describeNumber(0.1), "0.1");
  EXPECT_EQ(describeNumber(9.95), "9.95");
  EXPECT_EQ(describeNumber(1'000'000), "1000000");
  EXPECT_EQ(describeNumber(1e15), "1000000000000000");
  EXPECT_EQ(describeNumber(1e16), "1e+16");
  EXPECT_EQ(describeNumber(1e100), "1e+100");
  EXPECT_EQ(describeNumber(0.0001), "0.0001");
  EXPECT_EQ(describeNumber(0.00001), "1e-05");
}

}  // namespace
}  // namespace tarnix::tests
