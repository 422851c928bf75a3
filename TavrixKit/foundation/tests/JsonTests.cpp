#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "foundation/json/JsonValue.h"
#include "foundation/json/JsonWriter.h"

namespace tavrix {
namespace {

using namespace std::string_literals;
using Kind = JsonError::Kind;

std::string nested(int depth) {
  return std::string(std::size_t(depth), '[') + std::string(std::size_t(depth), ']');
}

/// Returns the error of reading a text, or nullopt if the text is well formed.
std::optional<JsonError> errorOf(const std::string& text) {
  try {
    parseJson(text);
    return std::nullopt;
  } catch (const JsonError& error) {
    return error;
  }
}

TEST(JsonReader, badText_isRefusedWithKindAndPlace) {
  struct Row {
    std::string text;
    Kind kind;
    JsonPosition position;
  };
  const std::string spaces(70'000, ' ');
  const std::string lines(70'000, '\n');
  const Row rows[] = {
      {"", Kind::syntax, {1, 1}},
      {"[1,]", Kind::syntax, {1, 4}},
      {"{\"a\":1,\n  b}", Kind::syntax, {2, 3}},
      {"[1] x", Kind::syntax, {1, 5}},
      {"[1]\0"s, Kind::syntax, {1, 4}},
      {"[1,\0 2]"s, Kind::syntax, {1, 4}},
      {"\xEF\xBB\xBF x", Kind::syntax, {1, 2}},
      {"\xEF\xBB\xBF\n x", Kind::syntax, {2, 2}},
      {"\xEF\xBB\xBF\xEF\xBB\xBF[1]", Kind::syntax, {1, 1}},
      {"\xEF\xBB[1]", Kind::syntax, {1, 1}},
      {" \xEF\xBB\xBF[1]", Kind::syntax, {1, 2}},
      {"[01]", Kind::syntax, {1, 3}},
      {"[1e999]", Kind::syntax, {1, 7}},
      {"[nan]", Kind::syntax, {1, 3}},
      {nested(65), Kind::tooDeep, {1, 65}},
      {std::string(100'000, '['), Kind::tooDeep, {1, 65}},
      // The same errors beyond the reader's first buffer.
      {"[" + spaces + "?]", Kind::syntax, {1, 70'002}},
      {"[\n" + spaces + "?]", Kind::syntax, {2, 70'001}},
      {"[" + lines + " ?]", Kind::syntax, {70'001, 2}},
  };
  for (const Row& row : rows) {
    const auto error = errorOf(row.text);
    ASSERT_TRUE(error) << row.text.substr(0, 40);
    EXPECT_EQ(error->kind(), row.kind) << row.text.substr(0, 40);
    EXPECT_EQ(error->position(), row.position)
        << row.text.substr(0, 40) << " at " << error->position().line << ":"
        << error->position().column;
  }
}

TEST(JsonReader, illFormedStrings_areRefused) {
  for (const std::string& text :
       {"[\"\xFF\"]"s, "[\"\xC0\xAF\"]"s, "[\"\xED\xA0\x80\"]"s, "[\"\\uD800\"]"s, "[\"\\uDC00\"]"s,
        "[\"\\uD800\\u0041\"]"s, "[\"a\0b\"]"s, "[\"\n\"]"s, "[\"\\x41\"]"s, "{\"\xFF\":1}"s,
        "[\"open"s}) {
    const auto error = errorOf(text);
    ASSERT_TRUE(error) << text;
    EXPECT_EQ(error->kind(), Kind::syntax) << text;
  }
  EXPECT_EQ(*parseJson("\"\\uD83C\\uDFD6\\u0000\\/\"").asString(), "🏖\0/"s);
}

TEST(JsonReader, lengthAndDepth_areBoundedExactlyEnough) {
  EXPECT_FALSE(errorOf(nested(64)));
  const std::string fits((std::size_t{1} << 20U) - 2, 'x');
  EXPECT_EQ(parseJson("\"" + fits + "\"").asString()->size(), fits.size());
  const std::string large(std::size_t{1200} * 1024, 'x');
  const std::string spaces(large.size(), ' ');
  const std::string zeros(large.size(), '0');
  for (const std::string& text :
       {"[\"" + large + "\"]", "{\"" + large + "\":1}", "[" + spaces + "1]", "[1]" + spaces,
        "[1]" + spaces + "junk", "0." + zeros + "1", "[0." + zeros + "]"}) {
    const auto error = errorOf(text);
    ASSERT_TRUE(error) << text.substr(0, 20);
    EXPECT_EQ(error->kind(), Kind::valueTooLong) << text.substr(0, 20);
  }
  // The limit is per value: many values of allowed length are accepted.
  EXPECT_FALSE(errorOf("[\"" + fits + "\",\"" + fits + "\"]"));
}

TEST(JsonReader, numbers_keepTheirKindAndValue) {
  const auto data = [](const char* text) { return parseJson(text).data; };
  EXPECT_EQ(std::get<std::uint64_t>(data("18446744073709551615")), UINT64_MAX);
  EXPECT_EQ(std::get<double>(data("18446744073709551616")), 0x1p64);
  EXPECT_EQ(std::get<std::int64_t>(data("-9223372036854775808")), INT64_MIN);
  EXPECT_EQ(std::get<double>(data("-9223372036854775809")), -0x1p63);
  EXPECT_EQ(std::get<std::uint64_t>(data("-0")), 0U);
  EXPECT_EQ(std::get<double>(data("12.0")), 12);
  EXPECT_EQ(std::get<double>(data("1e3")), 1000);
  EXPECT_EQ(std::get<double>(data("37.617300000000004")), 37.617300000000004);
  EXPECT_EQ(parseJson("{\"a\":1,\"b\":{},\"a\":2}").member("a")->asNumber(), 2);
}

/// Returns one byte at a time, then throws.
class DyingReader : public ByteReader {
 public:
  std::size_t read(std::span<char> buffer) override {
    if (left_-- == 0) throw std::runtime_error{"unplugged"};
    buffer[0] = '[';
    return 1;
  }

 private:
  int left_ = 10;
};

TEST(JsonReader, failingSource_endsTheReadingWithItsOwnError) {
  DyingReader source;
  class Anything : public JsonHandler {
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool integer(std::int64_t) override { return true; }
    bool unsignedInteger(std::uint64_t) override { return true; }
    bool number(double) override { return true; }
    bool string(std::string_view) override { return true; }
    bool key(std::string_view) override { return true; }
    bool startObject() override { return true; }
    bool endObject() override { return true; }
    bool startArray() override { return true; }
    bool endArray() override { return true; }
  } handler;
  EXPECT_THROW(readJson(source, handler), std::runtime_error);
}

TEST(JsonWriter, document_isPrettyAndShortest) {
  StringSink sink;
  JsonWriter json{sink};
  json.beginObject()
      .field("a", 0.1)
      .key("b")
      .beginArray()
      .value(-1)
      .value(1e22)
      .value(true)
      .endArray();
  json.key("c").beginObject().endObject().key("d").beginArray().endArray();
  json.field("e", std::optional<int>{})
      .field("f", "q\"\\/\n\x01\x7Fя\xFF")
      .field("g", 0.0 / 0.0)
      .endObject();
  json.finish();
  EXPECT_EQ(sink.text(),
            "{\n  \"a\": 0.1,\n  \"b\": [\n    -1,\n    1e+22,\n    true\n  ],\n  \"c\": {},\n  "
            "\"d\": [],\n"
            "  \"f\": \"q\\\"\\\\/\\n\\u0001\\u007fя\uFFFD\",\n  \"g\": null\n}\n");
}

TEST(JsonWriter, charactersThatHideOrReorderText_areEscaped) {
  const std::string hidden = "\x7f\u0080\u009f\u2028\u2029\u200e\u200f\u202a\u202e\u2066\u2069";
  const std::string shown = " é\u00a0\u2027\u202f\u2065\u206a\u200d한";
  StringSink sink;
  JsonWriter{sink}.value(std::string_view{hidden + shown}).finish();
  EXPECT_EQ(sink.text(),
            "\"\\u007f\\u0080\\u009f\\u2028\\u2029\\u200e\\u200f\\u202a\\u202e\\u2066\\u2069" +
                shown + "\"\n");
  EXPECT_EQ(*parseJson(sink.text()).asString(), hidden + shown);
}

RC_GTEST_PROP(JsonWriter, anyTextAndNumber_comeBack,
              (const std::vector<std::uint16_t>& units, double number)) {
  std::string text;
  for (const auto unit : units)
    text += unit < 0x80 ? std::string(1, char(unit)) : "\u0416\U0001F3D6";
  StringSink sink;
  JsonWriter json{sink};
  json.beginArray().value(text).value(number).endArray().finish();
  const JsonValue read = parseJson(sink.text());
  RC_ASSERT(*read.asArray()->at(0).asString() == text);
  RC_ASSERT(read.asArray()->at(1).asNumber() == number);
}

}  // namespace
}  // namespace tavrix
