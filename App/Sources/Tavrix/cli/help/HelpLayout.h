#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tavrix::cli {

/// A part of a help text.
struct HelpPart {
  enum class Kind {
    command,    ///< "tavrix plan SOURCE DEST — shows…": the call and its description
    paragraph,  ///< sentences, or a title such as "Examples:"
    item,       ///< "--explain" and its description, or an indented line without a description
    example,    ///< a line of the shell
    blank,      ///< an empty line
  };

  Kind kind = Kind::paragraph;
  std::string text{};                ///< in one line
  std::string term{};                ///< of a command or an item
  std::vector<std::string> lines{};  ///< as they are in the help text
  bool isPadded = false;             ///< the description of an item is in a column of its own
  std::size_t textStart = 0;         ///< the byte of the first line at which that column begins

  friend bool operator==(const HelpPart&, const HelpPart&) = default;
};

/// Splits a help text into its parts. A part begins at an empty line, at an indented line that does
/// not continue an item, and at a line "tavrix … — …". Indented lines below "Examples:" and its
/// like are examples.
std::vector<HelpPart> helpParts(std::string_view text);

/// Returns a line of the shell as one or more lines of at most `columns` terminal columns. Breaks
/// it only between its arguments, with a backslash.
std::string exampleLines(const HelpPart& example, int columns);

/// Returns the text with lines of at most `columns` terminal columns. Keeps parts that fit as they
/// are.
std::string laidOut(std::string_view text, int columns);

}  // namespace tavrix::cli
