#include "transfer/ChecksumFile.h"

#include <array>

#include "foundation/files/AtomicFile.h"

namespace tavrix::ChecksumFile {
namespace {

constexpr std::size_t digestDigits = 64;
constexpr std::string_view gap = "  ";
/// To sha256sum, "-" means its standard input, not a file.
constexpr std::string_view standardInput = "-";
constexpr std::string_view hereStandardInput = "./-";
/// A path of 4096 bytes, each escaped, and the text before it.
constexpr std::size_t longestLine = 10'000;

std::string escaped(std::string_view path) {
  std::string text;
  for (const char c : path) {
    if (c == '\\') {
      text += "\\\\";
    } else if (c == '\n') {
      text += "\\n";
    } else if (c == '\r') {
      text += "\\r";
    } else {
      text += c;
    }
  }
  return text;
}

std::optional<std::string> unescaped(std::string_view text) {
  std::string path;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      path += text[i];
      continue;
    }
    if (++i == text.size()) return std::nullopt;
    if (text[i] == '\\') {
      path += '\\';
    } else if (text[i] == 'n') {
      path += '\n';
    } else if (text[i] == 'r') {
      path += '\r';
    } else {
      return std::nullopt;
    }
  }
  return path;
}

/// Large enough for several million files; this program writes no longer list.
constexpr std::uint64_t maxListBytes = std::uint64_t{1} << 30U;

/// Splits the text that was read into the lines of a list.
class ListReader {
 public:
  /// Returns false if a line does not belong in a list of checksums.
  bool add(std::string_view text) {
    bytes_ += text.size();
    for (std::size_t end = 0; (end = text.find('\n')) != std::string_view::npos;) {
      line_ += text.substr(0, end);
      auto entry = decode(line_);
      if (!entry) return false;
      entries_.push_back(*std::move(entry));
      line_.clear();
      text.remove_prefix(end + 1);
    }
    line_ += text;
    return line_.size() <= longestLine && bytes_ <= maxListBytes;
  }
  bool isAtLineEnd() const { return line_.empty(); }
  std::vector<Entry> takeEntries() { return std::move(entries_); }

 private:
  std::string line_;
  std::uint64_t bytes_ = 0;
  std::vector<Entry> entries_;
};

}  // namespace

std::string encode(const Entry& entry) {
  const std::string path =
      entry.path == standardInput ? std::string{hereStandardInput} : escaped(entry.path);
  const bool isEscaped = path.find('\\') != std::string::npos;
  return (isEscaped ? "\\" : "") + entry.sha256 + std::string{gap} + path + '\n';
}

std::optional<Entry> decode(std::string_view line) {
  const bool isEscaped = line.starts_with('\\');
  if (isEscaped) line.remove_prefix(1);
  const std::string_view digest = line.substr(0, digestDigits);
  if (line.size() <= digestDigits + gap.size() ||
      digest.find_first_not_of("0123456789abcdef") != std::string_view::npos) {
    return std::nullopt;
  }
  line.remove_prefix(digestDigits);
  // An asterisk means that the file was read in binary mode, which makes no difference here.
  if (line[0] != ' ' || (line[1] != ' ' && line[1] != '*')) return std::nullopt;
  line.remove_prefix(gap.size());
  auto path = isEscaped ? unescaped(line) : std::optional<std::string>{line};
  if (!path) return std::nullopt;
  if (*path == hereStandardInput) path = standardInput;
  return Entry{std::string{digest}, *std::move(path)};
}

std::optional<std::vector<Entry>> read(const Folder& folder) {
  const auto status = folder.status(std::string{name});
  if (!status) return std::vector<Entry>{};
  if (status->type != FileStatus::Type::file) return std::nullopt;
  const auto file = folder.openFile(std::string{name});
  std::array<char, 65536> buffer;
  ListReader list;
  for (std::size_t count = 0; (count = file->read(buffer)) > 0;) {
    if (!list.add({buffer.data(), count})) return std::nullopt;
  }
  if (!list.isAtLineEnd()) return std::nullopt;
  return list.takeEntries();
}

void write(Folder& folder, const std::vector<Entry>& entries) {
  constexpr std::size_t pieceBytes = std::size_t{1} << 18U;
  writeFileAtomically(folder, std::string{name}, [&](WritableFile& file) {
    std::string piece;
    const auto flush = [&] {
      file.append(std::as_bytes(std::span{piece}));
      piece.clear();
    };
    for (const Entry& entry : entries) {
      piece += encode(entry);
      if (piece.size() >= pieceBytes) flush();
    }
    flush();
  });
  removeLeftOvers(folder, std::string{name});
}

}  // namespace tavrix::ChecksumFile
