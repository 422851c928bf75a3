#include "cli/help/HelpLayout.h"

#include <algorithm>
#include <array>

#include "cli/call/Wrapping.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

using Kind = HelpPart::Kind;

constexpr std::string_view dash = " — ";
constexpr std::array<std::string_view, 4> exampleTitles{
    "Примеры:", "Пример:", "Examples:", "Example:"};

std::size_t indentOf(std::string_view line) {
  return std::min(line.find_first_not_of(' '), line.size());
}

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const auto end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

/// Returns the bytes before the description of an item, which follows two spaces or more. Returns
/// npos if the line has no description.
std::size_t descriptionStart(std::string_view line) {
  const auto gap = line.find("  ", indentOf(line));
  return gap == std::string_view::npos ? gap : line.find_first_not_of(' ', gap);
}

std::string_view trimmedEnd(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// Returns a new part that begins with the line.
HelpPart begin(std::string_view line, bool isBelowExamples) {
  HelpPart part{.lines{std::string{line}}};
  const std::size_t indent = indentOf(line);
  part.text = line.substr(indent);
  if (line.empty()) {
    part.kind = Kind::blank;
  } else if (indent > 0 && isBelowExamples) {
    part.kind = Kind::example;
  } else if (indent > 0) {
    part.kind = Kind::item;
    const auto start = descriptionStart(line);
    part.isPadded = start != std::string_view::npos;
    part.term = trimmedEnd(line.substr(indent, part.isPadded ? start - indent : line.npos));
    part.text = part.isPadded ? line.substr(start) : "";
    part.textStart = part.isPadded ? start : 0;
  } else if (const auto split = line.find(dash);
             line.starts_with("tavrix ") && split != std::string_view::npos) {
    part.kind = Kind::command;
    part.term = line.substr(0, split);
    part.text = line.substr(split + dash.size());
  }
  return part;
}

bool continues(const HelpPart& part, std::string_view line) {
  const bool isCommand = line.starts_with("tavrix ") && line.find(dash) != std::string_view::npos;
  switch (part.kind) {
    case Kind::command:
    case Kind::paragraph:
      return indentOf(line) == 0 && !line.empty() && !isCommand && !part.text.ends_with(':');
    case Kind::item:
      return indentOf(line) > indentOf(part.lines.front()) && !line.empty();
    case Kind::example:
    case Kind::blank:
      return false;
  }
  return false;
}

/// A column before which no description begins after a single space: short terms have more.
constexpr std::size_t narrowestTerm = 16;

/// Splits the first line of an item where its next line begins, if a single space is before that
/// column.
void splitAtColumn(HelpPart& item, std::size_t column) {
  if (column < narrowestTerm) return;
  const std::string& first = item.lines.front();
  const std::size_t indent = indentOf(first);
  for (auto space = first.find(' ', indent); space != first.npos;
       space = first.find(' ', space + 1)) {
    const std::size_t start = space + 1;
    if (displayWidth(first.substr(0, start)) != static_cast<int>(column)) continue;
    item.term = trimmedEnd(first.substr(indent, start - indent));
    item.text = first.substr(start);
    item.isPadded = true;
    item.textStart = start;
    return;
  }
}

std::size_t textColumn(const HelpPart& item) {
  return static_cast<std::size_t>(displayWidth(item.lines.front().substr(0, item.textStart)));
}

/// Adds a line to the description of a part, or to the term of an item without one.
void add(HelpPart& part, std::string_view line) {
  if (part.kind == Kind::item && !part.isPadded && part.lines.size() == 1) {
    splitAtColumn(part, indentOf(line));
  }
  const bool isTermGoingOn =
      part.kind == Kind::item && !part.isPadded && indentOf(line) < narrowestTerm;
  if (isTermGoingOn) part.term.append(" ").append(line.substr(indentOf(line)));
  part.lines.emplace_back(line);
  if (isTermGoingOn) return;
  if (!part.text.empty()) part.text += ' ';
  part.text += line.substr(indentOf(line));
}

/// Splits a line of the shell before its options and pipes, outside of quotation marks.
std::vector<std::string> shellPieces(std::string_view line) {
  std::vector<std::string> pieces{{}};
  bool isQuoted = false;
  int depth = 0;  // of parentheses
  for (std::size_t i = 0; i < line.size(); ++i) {
    const std::string_view rest = line.substr(i);
    const std::string& last = pieces.back();
    // The quoted value of an option stays beside it.
    const bool awaitsValue =
        last.starts_with('|') || (last.starts_with("--") && last.find_first_of(" =") == last.npos);
    const bool isBreak = rest.starts_with(" --") || rest.starts_with(" | ") ||
                         rest.starts_with(" && ") || (rest.starts_with(" '") && !awaitsValue);
    if (!isQuoted && depth == 0 && isBreak) {
      pieces.emplace_back();
      continue;
    }
    if (line[i] == '\'') isQuoted = !isQuoted;
    if (!isQuoted && line[i] == '(') ++depth;
    if (!isQuoted && line[i] == ')') --depth;
    pieces.back() += line[i];
  }
  return pieces;
}

/// Puts as many pieces of an example on each line as fit beside a backslash.
std::string brokenExample(const std::string& line, int columns) {
  const std::string indent(indentOf(line), ' ');
  const int room = columns - displayWidth(" \\");
  std::string text;
  std::string current;
  for (const std::string& piece : shellPieces(std::string_view{line}.substr(indent.size()))) {
    std::string longer = current.empty() ? indent : current + ' ';
    longer += piece;
    if (!current.empty() && displayWidth(longer) > room) {
      text += current + " \\\n";
      current = indent + "  ";
      current += piece;
    } else {
      current = longer;
    }
  }
  return text + current + '\n';
}

/// A space that no line ends with: that between "--set" and its value.
constexpr std::string_view gluedSet = "--set\u00A0";
constexpr std::string_view plainSet = "--set ";

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  for (auto at = text.find(from); at != text.npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}
std::string glued(const std::string& text) { return replaced(text, plainSet, gluedSet); }
std::string unglued(const std::string& text) { return replaced(text, gluedSet, plainSet); }

/// Returns the part with every line after the first indented like the description.
std::string broken(const HelpPart& part, int columns) {
  if (part.kind == Kind::example) return exampleLines(part, columns);
  std::string start;
  std::string text = part.text;
  std::size_t indent = 0;
  if (part.kind == Kind::command) text = part.term + std::string{dash} + part.text;
  if (part.kind == Kind::item) {
    const std::string& first = part.lines.front();
    indent = part.lines.size() > 1 ? indentOf(part.lines[1]) : indentOf(first);
    start = first.substr(0, indentOf(first));
    if (part.isPadded) {
      start = first.substr(0, part.textStart);
      indent = textColumn(part);
    } else {
      text = part.term + (part.text.empty() ? "" : " ") + part.text;
    }
  }
  std::string result;
  for (const std::string& line : wrapped(glued(text), columns - static_cast<int>(indent))) {
    result += start + unglued(line) + '\n';
    start.assign(indent, ' ');
  }
  return result;
}

}  // namespace

std::vector<HelpPart> helpParts(std::string_view text) {
  std::vector<HelpPart> parts;
  bool isBelowExamples = false;
  for (const std::string_view line : linesOf(text)) {
    if (!parts.empty() && continues(parts.back(), line)) {
      add(parts.back(), line);
      continue;
    }
    if (indentOf(line) == 0) {
      isBelowExamples = std::ranges::find(exampleTitles, line) != exampleTitles.end();
    }
    HelpPart part = begin(line, isBelowExamples);
    if (part.kind == Kind::item && !part.isPadded && !parts.empty() && parts.back().isPadded) {
      splitAtColumn(part, textColumn(parts.back()));
    }
    parts.push_back(std::move(part));
  }
  return parts;
}

std::string exampleLines(const HelpPart& example, int columns) {
  const std::string& line = example.lines.front();
  return displayWidth(line) <= columns ? line + '\n' : brokenExample(line, columns);
}

std::string laidOut(std::string_view text, int columns) {
  std::string result;
  for (const HelpPart& part : helpParts(text)) {
    const bool fits = std::ranges::all_of(
        part.lines, [&](const std::string& line) { return displayWidth(line) <= columns; });
    if (!fits) {
      result += broken(part, columns);
      continue;
    }
    for (const std::string& line : part.lines) result += line + '\n';
  }
  return result;
}

}  // namespace tavrix::cli
