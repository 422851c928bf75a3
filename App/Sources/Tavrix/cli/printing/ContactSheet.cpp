#include "cli/printing/ContactSheet.h"

#include <fmt/format.h>

#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

constexpr std::string_view style = R"(
  :root { color-scheme: light dark; --line: #dededa; --second: #5b6167; }
  @media (prefers-color-scheme: dark) { :root { --line: #3a3d41; --second: #a9aeb4; } }
  body { font: 15px/1.4 system-ui, sans-serif; margin: 32px auto; max-width: 1400px; padding: 0 24px; }
  h1 { font-size: 20px; }
  section { border-top: 1px solid var(--line); padding: 16px 0 20px; }
  h2 { font-size: 15px; margin: 0; }
  p { color: var(--second); font-size: 13px; margin: 4px 0 12px; }
  ul { display: flex; flex-wrap: wrap; gap: 8px; list-style: none; margin: 0; padding: 0; }
  img { border-radius: 8px; display: block; height: 128px; }
  li.more { align-self: center; color: var(--second); padding: 0 8px; }
)";

std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : printable(text)) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += c;
    }
  }
  return result;
}

/// Returns a relative path as a URL (RFC 3986): all but unreserved characters and "/" encoded.
std::string urlOf(std::string_view path) {
  constexpr std::string_view kept = "-._~/";
  std::string url;
  for (const char c : path) {
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    const bool isDigit = c >= '0' && c <= '9';
    if (isLetter || isDigit || kept.find(c) != std::string_view::npos) {
      url += c;
    } else {
      url += fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
  }
  return url;
}

std::string htmlOf(const ContactSheet::Section& section) {
  std::string html = fmt::format("<section>\n<h2>{}</h2>\n<p>{}{}{}</p>\n<ul>\n",
                                 escaped(section.name), escaped(section.days),
                                 section.days.empty() ? "" : " · ", escaped(section.counts));
  for (const ContactSheet::Picture& picture : section.pictures) {
    const std::string name = escaped(picture.name);
    html += fmt::format("<li><img src=\"{}\" alt=\"{}\" title=\"{}\" loading=\"lazy\"></li>\n",
                        urlOf(picture.file), name, name);
  }
  if (section.shotsNotShown > 0) {
    html += fmt::format("<li class=\"more\">+{}</li>\n", section.shotsNotShown);
  }
  return html + "</ul>\n</section>\n";
}

}  // namespace

std::string htmlOf(const ContactSheet& sheet, Language language) {
  const std::string title = escaped(sheet.title);
  std::string html = fmt::format(
      "<!DOCTYPE html>\n<html lang=\"{}\">\n<head>\n<meta charset=\"utf-8\">\n<meta "
      "name=\"viewport\" content=\"width=device-width\">\n<title>{}</title>\n<style>{}</style>\n"
      "</head>\n<body>\n<h1>{}</h1>\n",
      language == Language::russian ? "ru" : "en", title, style, title);
  for (const ContactSheet::Section& section : sheet.sections) html += htmlOf(section);
  return html + "</body>\n</html>\n";
}

}  // namespace tavrix::cli
