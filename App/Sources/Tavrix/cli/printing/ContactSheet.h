#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/Sentence.h"

namespace tavrix::cli {

/// A page with the pictures of all folders, as a person looks at it in a browser.
struct ContactSheet {
  struct Picture {
    std::string file;  ///< below the page's folder, with "/" between parts
    std::string name;  ///< of the shot, for people
  };
  struct Section {
    std::string name;    ///< of the folder
    std::string days;    ///< empty without a date
    std::string counts;  ///< "11 shots, 22 files"
    std::vector<Picture> pictures{};
    std::uint64_t shotsNotShown = 0;
  };
  std::string title;
  std::vector<Section> sections{};
};

/// Returns the page as a complete HTML file in UTF-8. Every text is escaped, every file name is
/// encoded as a relative URL.
std::string htmlOf(const ContactSheet& sheet, Language language);

}  // namespace tavrix::cli
