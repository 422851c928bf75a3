#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "foundation/files/FileError.h"
#include "foundation/files/Folder.h"
#include "sample/SampleLibrary.h"

namespace {

constexpr const char* usage =
    "Usage: tavrix-sample OUT-DIR [--seed N]\n"
    "Writes a made-up phone library, OUT-DIR/snapshot.json and OUT-DIR/media/. The same seed (0 "
    "to\n"
    "4294967295, 1 by default) gives the same bytes. Its films are placeholders.\n";

struct Arguments {
  std::string folder;
  tavrix::SampleOptions options;
};

std::optional<std::uint32_t> parseSeed(std::string_view text) {
  std::uint32_t seed = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seed);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return seed;
}

std::optional<Arguments> parseArguments(const std::vector<std::string_view>& words) {
  Arguments arguments;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (words[i] == "--seed") {
      const auto seed = i + 1 < words.size() ? parseSeed(words[++i]) : std::nullopt;
      if (!seed) return std::nullopt;
      arguments.options.seed = *seed;
    } else if (words[i].starts_with('-') || !arguments.folder.empty()) {
      return std::nullopt;
    } else {
      arguments.folder = words[i];
    }
  }
  if (arguments.folder.empty()) return std::nullopt;
  return arguments;
}

int makeLibrary(const Arguments& arguments) {
  std::filesystem::create_directories(arguments.folder);
  const auto folder = tavrix::openFolder(arguments.folder);
  const std::size_t count = tavrix::SampleLibrary::write(arguments.options, *folder);
  std::printf("%zu files in %s\n", count, arguments.folder.c_str());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string_view> words(argv + 1, argv + argc);
  if (std::find(words.begin(), words.end(), "--help") != words.end()) {
    std::fputs(usage, stdout);
    return 0;
  }
  const auto arguments = parseArguments(words);
  if (!arguments) {
    std::fputs(usage, stderr);
    return 2;
  }
  try {
    return makeLibrary(*arguments);
  } catch (const tavrix::FileError& error) {
    std::fprintf(stderr, "tavrix-sample: %s: %s\n", error.path().c_str(),
                 std::generic_category().message(error.code()).c_str());
  } catch (const std::exception& error) {
    std::fprintf(stderr, "tavrix-sample: %s\n", error.what());
  }
  return 1;
}
