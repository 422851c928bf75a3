#include "settings/defaults/DefaultsFile.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <fstream>

#include "foundation/Text.h"

namespace tavrix {
namespace {

std::string exampleOfPage() {
  std::ifstream page{std::string{TAVRIX_DOCS} + "/defaults.md"};
  const std::string text{std::istreambuf_iterator<char>{page}, {}};
  const auto start = text.find("```json\n") + 8;
  return text.substr(start, text.find("```", start) - start);
}

TEST(DefaultsFile, exampleOfTheDescription_isWhatTheProgramWrites) {
  const DefaultsObjects objects = DefaultsFile::decode(exampleOfPage());
  EXPECT_EQ(DefaultsFile::encode(objects), exampleOfPage());
  EXPECT_EQ(objects.at("eventGapHours").asNumber(), 2.5);
  EXPECT_EQ(*objects.at("manualHome").member("name")->asString(), "Дача");
}

TEST(DefaultsFile, whatIsNoObject_isRefusedWithItsPlace) {
  struct Row {
    std::string text;
    JsonError::Kind kind;
    JsonPosition position;
  };
  const std::string tooDeep = "{\"a\":" + std::string(100, '[') + std::string(100, ']') + "}";
  const std::vector<Row> rows{
      {"", JsonError::Kind::syntax, {1, 1}},
      {"{\n  \"a\": 1,\n  oops\n}", JsonError::Kind::syntax, {3, 3}},
      {"{\"a\":1", JsonError::Kind::syntax, {1, 7}},
      {"{\"a\":\"\xFF\"}", JsonError::Kind::syntax, {1, 8}},
      {"[]", JsonError::Kind::rejected, {1, 1}},
      {"null", JsonError::Kind::rejected, {1, 1}},
      {tooDeep, JsonError::Kind::tooDeep, {1, 69}},
  };
  for (const Row& row : rows) {
    try {
      DefaultsFile::decode(row.text);
      ADD_FAILURE() << "decoded: " << row.text;
    } catch (const JsonError& error) {
      EXPECT_EQ(error.kind(), row.kind) << row.text;
      EXPECT_EQ(error.position(), row.position) << row.text;
    }
  }
}

TEST(DefaultsFile, objectsThatNobodyKnows_areKeptExactly) {
  const std::string text = R"({
  "Z": 18446744073709551615,
  "a": [
    null,
    true,
    -9223372036854775808,
    0.1,
    {
      "": "\"\\\u0001 é"
    }
  ]
}
)";
  EXPECT_EQ(DefaultsFile::encode(DefaultsFile::decode(text)), text);
}

JsonValue anyValue(int depth) {
  switch (*rc::gen::inRange(0, depth > 0 ? 6 : 4)) {
    case 0:
      return {*rc::gen::arbitrary<bool>()};
    case 1:
      return {*rc::gen::arbitrary<double>()};
    case 2:
      return {replacingInvalidUtf8(*rc::gen::string<std::string>())};
    case 3:
      return {*rc::gen::arbitrary<std::uint64_t>()};
    case 4:
      return {JsonValue::Array{anyValue(depth - 1), anyValue(depth - 1)}};
    default:
      return {JsonValue::Object{
          {replacingInvalidUtf8(*rc::gen::string<std::string>()), anyValue(depth - 1)}}};
  }
}

RC_GTEST_PROP(DefaultsFile, anyObjects_areTheSameTextAfterReading, ()) {
  const DefaultsObjects objects{{"a", anyValue(4)}, {"b", anyValue(4)}};
  const std::string text = DefaultsFile::encode(objects);
  const DefaultsObjects again = DefaultsFile::decode(text);
  RC_ASSERT(DefaultsFile::encode(again) == text);
  RC_ASSERT(again.at("a").asNumber() == objects.at("a").asNumber());
}

}  // namespace
}  // namespace tavrix
