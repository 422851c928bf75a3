#include "device/platform/AfcPhoneFiles.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <map>

#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

/// The system's code for what a phone answers; nothing when the answer is no phone's.
std::optional<int> codeOf(afc_error_t error) {
  switch (error) {
    case AFC_E_OBJECT_NOT_FOUND:
      return ENOENT;
    case AFC_E_PERM_DENIED:
      return EACCES;
    case AFC_E_OBJECT_IS_DIR:
      return EISDIR;
    case AFC_E_INVALID_ARG:
      return EINVAL;
    case AFC_E_OP_NOT_SUPPORTED:
      return EOPNOTSUPP;
    case AFC_E_NO_RESOURCES:
      return EMFILE;
    case AFC_E_UNKNOWN_ERROR:
    case AFC_E_READ_ERROR:
    case AFC_E_IO_ERROR:
    case AFC_E_INTERNAL_ERROR:
    case AFC_E_OBJECT_BUSY:
      return EIO;
    default:
      return std::nullopt;
  }
}

/// Whether the phone still answers. When it leaves in the middle of an answer, the library may make
/// anything of what is there: a success, an error of the phone's, nothing.
bool isThere(afc_client_t client) {
  char** raw = nullptr;
  const afc_error_t error = afc_get_device_info(client, &raw);
  const TextList list{raw};
  return error == AFC_E_SUCCESS && raw != nullptr && *raw != nullptr;
}

void checkPresence(afc_client_t client) {
  if (!isThere(client)) throw PhoneError{PhoneError::Kind::gone};
}

void check(afc_client_t client, afc_error_t error, FileOperation operation,
           const std::string& path) {
  if (error == AFC_E_SUCCESS) return;
  const auto code = codeOf(error);
  if (!code) throw PhoneError{PhoneError::Kind::gone};
  checkPresence(client);
  throw FileError{operation, path, *code};
}

std::int64_t numberOf(const std::string& text) {
  std::int64_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

Instant instantOf(std::int64_t nanoseconds) {
  return std::chrono::floor<std::chrono::milliseconds>(
      std::chrono::sys_time<std::chrono::nanoseconds>{std::chrono::nanoseconds{nanoseconds}});
}

class AfcFile : public PhoneFile {
 public:
  AfcFile(afc_client_t client, std::uint64_t handle, std::string path, std::uint64_t size,
          bool readsAhead)
      : client_(client),
        handle_(handle),
        path_(std::move(path)),
        size_(size),
        readsAhead_(readsAhead) {}
  ~AfcFile() override {
    const BrokenPipeGuard guard;
    if (isOpen_) afc_file_close(client_, handle_);
  }

  std::uint64_t size() const override { return size_; }

  std::size_t read(std::uint64_t offset, std::span<char> buffer) override {
    if (!readsAhead_ || buffer.size() >= aheadBytes) return readDirectly(offset, buffer);
    if (offset < windowBegin_ || offset + buffer.size() > windowBegin_ + window_.size()) {
      const std::uint64_t room = size_ - std::min(offset, size_);
      window_.resize(std::max<std::size_t>(buffer.size(), std::min(room, aheadBytes)));
      window_.resize(readDirectly(offset, window_));
      windowBegin_ = offset;
    }
    const std::size_t begin = static_cast<std::size_t>(offset - windowBegin_);
    const std::size_t count = std::min(buffer.size(), window_.size() - begin);
    std::memcpy(buffer.data(), window_.data() + begin, count);
    return count;
  }

  void close() override {
    const BrokenPipeGuard guard;
    isOpen_ = false;
    checked(afc_file_close(client_, handle_));
  }

  void confirmPosition(std::uint64_t position) override {
    const BrokenPipeGuard guard;
    std::uint64_t actual = 0;
    checked(afc_file_tell(client_, handle_, &actual));
    if (actual == position) return;
    checkPresence(client_);
    throw FileError{FileOperation::read, path_, EIO};
  }

 private:
  /// Pictures have what is looked for in their first tens of kilobytes.
  static constexpr std::uint64_t aheadBytes = 64 * 1024;
  static constexpr std::size_t largestRead = 1024 * 1024;

  void checked(afc_error_t error) {
    try {
      check(client_, error, FileOperation::read, path_);
    } catch (const PhoneError&) {
      isOpen_ = false;
      throw;
    }
  }

  std::size_t readDirectly(std::uint64_t offset, std::span<char> buffer) {
    const BrokenPipeGuard guard;
    if (offset != position_) {
      checked(afc_file_seek(client_, handle_, static_cast<std::int64_t>(offset), SEEK_SET));
      position_ = offset;
    }
    std::size_t done = 0;
    while (done < buffer.size()) {
      const std::size_t wanted = std::min(buffer.size() - done, largestRead);
      std::uint32_t count = 0;
      checked(afc_file_read(client_, handle_, buffer.data() + done,
                            static_cast<std::uint32_t>(wanted), &count));
      if (count == 0 || count > wanted) break;
      done += count;
      position_ += count;
      // Asking again at the end of the file would cost a call for nothing.
      if (position_ >= size_) break;
    }
    return done;
  }

  afc_client_t client_;
  std::uint64_t handle_;
  std::string path_;
  std::uint64_t size_;
  bool readsAhead_;
  bool isOpen_ = true;
  std::uint64_t position_ = 0;
  std::string window_;
  std::uint64_t windowBegin_ = 0;
};

class AfcPhoneFiles : public PhoneFiles {
 public:
  explicit AfcPhoneFiles(FilesHandle client) : client_(std::move(client)) {}
  ~AfcPhoneFiles() override {
    const BrokenPipeGuard guard;
    client_.reset();
  }

  void confirmPresence() override {
    const BrokenPipeGuard guard;
    checkPresence(client_.get());
  }

  std::vector<std::string> names(const std::string& folder) override {
    const BrokenPipeGuard guard;
    char** raw = nullptr;
    const afc_error_t error = afc_read_directory(client_.get(), folder.c_str(), &raw);
    const TextList list{raw};
    check(client_.get(), error, FileOperation::list, folder);
    checkPresence(client_.get());
    std::vector<std::string> names;
    for (char** name = raw; name != nullptr && *name != nullptr; ++name) {
      const std::string_view text = *name;
      const bool isPart = text.find('/') == std::string_view::npos && !text.empty();
      if (isPart && text != "." && text != "..") names.emplace_back(text);
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  FileStatus status(const std::string& path) override {
    const auto fields = infoOf(path);
    if (!fields.contains("st_size") || !fields.contains("st_ifmt")) checkPresence(client_.get());
    const auto field = [&](const char* name) {
      const auto found = fields.find(name);
      return found == fields.end() ? std::string{} : found->second;
    };
    FileStatus status;
    status.type = typeOf(field("st_ifmt"));
    status.size = static_cast<std::uint64_t>(std::max<std::int64_t>(0, numberOf(field("st_size"))));
    const std::int64_t created = numberOf(field("st_birthtime"));
    status.modified = instantOf(created > 0 ? created : numberOf(field("st_mtime")));
    return status;
  }

  std::unique_ptr<PhoneFile> open(const std::string& path, std::uint64_t size,
                                  bool readsAhead) override {
    const BrokenPipeGuard guard;
    std::uint64_t handle = 0;
    check(client_.get(), afc_file_open(client_.get(), path.c_str(), AFC_FOPEN_RDONLY, &handle),
          FileOperation::open, path);
    return std::make_unique<AfcFile>(client_.get(), handle, path, size, readsAhead);
  }

 private:
  static FileStatus::Type typeOf(const std::string& text) {
    if (text == "S_IFREG") return FileStatus::Type::file;
    if (text == "S_IFDIR") return FileStatus::Type::folder;
    return text == "S_IFLNK" ? FileStatus::Type::link : FileStatus::Type::other;
  }

  /// Names and values in turn.
  std::map<std::string, std::string> infoOf(const std::string& path) {
    const BrokenPipeGuard guard;
    char** raw = nullptr;
    const afc_error_t error = afc_get_file_info(client_.get(), path.c_str(), &raw);
    const TextList list{raw};
    check(client_.get(), error, FileOperation::status, path);
    std::map<std::string, std::string> fields;
    for (char** pair = raw; pair != nullptr && pair[0] != nullptr && pair[1] != nullptr;
         pair += 2) {
      fields[pair[0]] = pair[1];
    }
    return fields;
  }

  FilesHandle client_;
};

}  // namespace

std::unique_ptr<PhoneFiles> afcPhoneFiles(FilesHandle client) {
  return std::make_unique<AfcPhoneFiles>(std::move(client));
}

}  // namespace tavrix
