#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "cli/CommandTable.h"
#include "cli/tests/CommandTester.h"
#include "device/cable/tests/support/SimulatedCable.h"

namespace tavrix::cli {
namespace {

/// A section of docs/json.md: its text, and its examples.
struct Section {
  std::string text;
  std::vector<JsonValue> examples;
};

/// Returns the sections by their headings.
std::map<std::string, Section> sectionsOfPage() {
  std::ifstream page{std::string{TAVRIX_DOCS} + "/json.md"};
  std::map<std::string, Section> sections;
  std::string heading;
  std::string example;
  bool isExample = false;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("## ")) heading = line.substr(3);
    if (isExample && line == "```") {
      sections[heading].examples.push_back(parseJson(std::exchange(example, "")));
      isExample = false;
    } else if (isExample) {
      example += line + '\n';
    } else if (line == "```json") {
      isExample = true;
    } else if (!heading.empty()) {
      sections[heading].text += line + '\n';
    }
  }
  return sections;
}

std::string typeOf(const JsonValue& json) {
  if (json.asObject() != nullptr) return "object";
  if (json.asArray() != nullptr) return "array";
  if (json.asBool() != nullptr) return "boolean";
  return json.asString() != nullptr ? "string" : "number";
}

using Shape = std::map<std::string, std::string>;

/// Adds the types of all fields by their paths, those of all items of a list together. Fields that
/// hold what other pages describe have no shape here.
void addShape(const JsonValue& json, const std::string& path, Shape& shape) {
  const std::string field = path.substr(path.rfind('.') + 1);
  for (const std::string free : {"template", "value", "initial"}) {
    if (field == free) return;
  }
  shape.emplace(path, typeOf(json));
  if (const auto* const array = json.asArray()) {
    for (const JsonValue& item : *array) addShape(item, path + "[]", shape);
  }
  if (const auto* const object = json.asObject()) {
    for (const auto& [key, value] : *object) addShape(value, path + "." + key, shape);
  }
}

Shape shapeOf(const JsonValue& json) {
  Shape shape;
  addShape(json, "", shape);
  return shape;
}

bool isOptional(const std::string& page, const std::string& path) {
  const std::string name = path.substr(path.rfind('.') + 1);
  std::istringstream lines{page};
  for (std::string line; std::getline(lines, line);) {
    const bool isItsRow = line.starts_with("|") && line.find('`' + name + '`') < line.find("| ", 2);
    if (isItsRow && line.find("optional") != line.npos) return true;
  }
  return false;
}

/// A field that the example shows may be absent if the page calls it optional, or if what holds it
/// is absent or an empty list.
void expectShown(const Shape& example, const Shape& printed, const std::string& page) {
  for (const auto& [path, type] : example) {
    const std::string holder = path.substr(0, std::max(path.rfind('.'), std::size_t{0}));
    const bool isItem = path.ends_with("[]");
    if (printed.contains(path) || isItem || !printed.contains(holder)) continue;
    EXPECT_TRUE(isOptional(page, path)) << path << " is not printed and not optional";
  }
}

struct JsonPage : testing::Test {
  JsonPage() {
    tester.addPhone(smallSnapshot, smallMedia);
    std::filesystem::remove(tester.folder / "phone/media/IMG_0003.MOV");
    tester.folder.write("photos/No date/IMG_0004.PNG", "of another program");
    SimulatedPhone phone;
    phone.root = cable.root();
    cable.plugInAll({phone});
    tester.phones = &cable.browser();
    tester.conversionProgram = TAVRIX_CONVERT_PROGRAM;
  }

  void expectAsDescribed(const std::string& heading, std::vector<std::string> call,
                         std::size_t number, bool isWhole) {
    SCOPED_TRACE(heading);
    call.emplace_back("--json");
    const CommandResult result = tester.run(call);
    ASSERT_FALSE(result.out.empty()) << result.err;
    const Section& section = page.at(heading);
    ASSERT_GT(section.examples.size(), number);
    const Shape example = shapeOf(section.examples[number]);
    const Shape printed = shapeOf(result.json());
    for (const auto& [path, type] : printed) {
      const auto shown = example.find(path);
      if (shown == example.end() && !isWhole) continue;
      ASSERT_NE(shown, example.end()) << path << " is not in the example";
      EXPECT_EQ(shown->second, type) << path;
    }
    expectShown(example, printed, section.text);
  }

  const std::map<std::string, Section> page = sectionsOfPage();
  SimulatedCable cable;
  CommandTester tester;
};

TEST_F(JsonPage, everyCommand_printsWhatItsExampleShows) {
  const std::string city = R"({"tokens":[{"city":{"_0":"asIs"}}],"language":"english"})";
  struct Row {
    std::string heading;
    std::vector<std::string> call;
    std::size_t example = 0;
    bool isWhole = true;  ///< the example shows all fields
  };
  const std::vector<Row> rows{
      {"phones", {"phones"}},
      {"window", {"window", "phone"}},
      {"catalog", {"catalog", "phone"}},
      {"bundles", {"bundles", "phone"}},
      {"groups", {"groups", "phone", "--set", "uiMode=trips"}},
      {"places", {"places", "phone"}},
      {"plan", {"plan", "phone", "photos"}},
      {"transfer", {"transfer", "phone", "photos"}},
      {"history", {"history"}},
      {"history", {"history", "--asset", "100APPLE/IMG_0003.MOV"}},
      {"history RECORD-ID", {"history", "last"}, 0, false},
      {"history RECORD-ID", {"history", "last", "--delete"}, 1},
      {"verify", {"verify", "photos", "--write-checksums"}},
      {"repair", {"repair", "phone", "photos"}},
      {"marker rebuild", {"marker", "rebuild", "phone", "photos"}},
      {"snapshot", {"snapshot", "phone", "photos2"}},
      {"thumbnails", {"thumbnails", "phone", "other"}},
      {"cache", {"cache"}},
      {"cache reset", {"cache", "reset"}},
      {"geocache reset", {"geocache", "reset"}},
      {"settings", {"settings"}},
      {"settings --all", {"settings", "--all"}},
      {"settings set", {"settings", "set", "eventGapHours", "6"}},
      {"settings reset", {"settings", "reset", "eventGapHours"}},
      {"presets save", {"presets", "save", "Day", city}},
      {"presets", {"presets"}},
      {"presets delete", {"presets", "delete", "Day"}},
      {"template render", {"template", "render", "--template", city, "--context", "{}"}},
      {"template presets", {"template", "presets"}},
      {"template sanitize", {"template", "sanitize", "a/b"}},
      {"help", {"help", "places"}},
  };
  std::map<std::string, Section> untried = page;
  untried.erase("Progress");  // of standard error, which TransferCommandTests reads
  for (const Row& row : rows) {
    expectAsDescribed(row.heading, row.call, row.example, row.isWhole);
    untried.erase(row.heading);
  }
  EXPECT_TRUE(untried.empty()) << untried.begin()->first << " is described but not tried";
  for (const CommandSpec& command : commandTable()) {
    EXPECT_TRUE(page.contains(command.words())) << command.words() << " is not described";
  }
}

}  // namespace
}  // namespace tavrix::cli
