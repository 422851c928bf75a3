#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "cli/manual/Completions.h"
#include "cli/manual/ManualPage.h"
#include "cli/manual/SettingsPage.h"

namespace tavrix::cli {
namespace {

std::string textOf(const std::string& what) {
  if (what == "man-en") return manualPage(Language::english, TAVRIX_VERSION);
  if (what == "man-ru") return manualPage(Language::russian, TAVRIX_VERSION);
  if (what == "bash") return bashCompletion();
  if (what == "zsh") return zshCompletion();
  if (what == "fish") return fishCompletion();
  if (what == "settings") return settingsPage();
  return {};
}

int run(const std::vector<std::string>& arguments) {
  const std::string text = arguments.size() == 2 ? textOf(arguments[0]) : "";
  if (text.empty()) {
    std::fputs("Usage: tavrix-manual man-en|man-ru|bash|zsh|fish|settings FILE\n", stderr);
    return 2;
  }
  std::ofstream file{arguments[1], std::ios::binary};
  file << text << std::flush;
  if (file) return 0;
  std::fprintf(stderr, "tavrix-manual: cannot write %s\n", arguments[1].c_str());
  return 1;
}

}  // namespace
}  // namespace tavrix::cli

/// Writes a page or a script that is made from the program's own tables.
int main(int argc, char** argv) { return tavrix::cli::run({argv + 1, argv + argc}); }
