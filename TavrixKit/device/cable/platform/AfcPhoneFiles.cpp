#include "device/cable/platform/AfcPhoneFiles.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <map>

#include "device/cable/PatientThread.h"
#include "foundation/files/FileError.h"

namespace tavrix {
namespace {

/// Returns the system's error code for an error of the phone. Returns nullopt if the error does not
/// come from the phone.
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

/// Returns true if the phone still answers. If it leaves in the middle of an answer, the library
/// may report anything: a success, an error of the phone, nothing.
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

/// The connection to one phone. The library may wait without a limit on a thread of its own, while
/// the caller waits for a limited time.
class Line {
 public:
  Line(std::shared_ptr<afc_client_private> client, std::chrono::milliseconds patience,
       const std::stop_token& stop)
      : client_(std::move(client)), thread_(patience), stop_(stop) {}
  ~Line() {
    thread_.finish([client = std::move(client_)] {});
  }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  /// Makes calls of the library with the connection. `work` must own everything that it uses.
  template <typename Work>
  auto call(Work work) {
    auto answer = thread_.ask(
        [client = client_, work = std::move(work)] {
          const BrokenPipeGuard guard;
          return work(client.get());
        },
        stop_);
    if (answer.outcome == PatientThread::Outcome::stopped) {
      throw PhoneError{PhoneError::Kind::stopped};
    }
    if (answer.outcome == PatientThread::Outcome::late) throw PhoneError{PhoneError::Kind::silent};
    return *std::move(answer.result);
  }

 private:
  std::shared_ptr<afc_client_private> client_;
  PatientThread thread_;
  std::stop_token stop_;
};

/// The result of calls that return nothing.
struct Done {};

constexpr std::size_t largestRead = 1024 * 1024;

/// Reads up to `wanted` bytes from `offset` on, in pieces. `place` is the current position of the
/// phone in the file.
struct Piece {
  std::shared_ptr<std::vector<char>> bytes;
  std::uint64_t handle = 0;
  std::string path;
  std::uint64_t fileSize = 0;
  std::uint64_t place = 0;
  std::uint64_t offset = 0;
  std::size_t wanted = 0;

  /// Returns the number of bytes that were read.
  std::size_t read(afc_client_t client) const {
    if (offset != place) {
      check(client, afc_file_seek(client, handle, static_cast<std::int64_t>(offset), SEEK_SET),
            FileOperation::read, path);
    }
    if (bytes->size() < wanted) bytes->resize(wanted);
    std::size_t done = 0;
    while (done < wanted) {
      const std::size_t size = std::min(wanted - done, largestRead);
      std::uint32_t count = 0;
      check(client,
            afc_file_read(client, handle, bytes->data() + done, static_cast<std::uint32_t>(size),
                          &count),
            FileOperation::read, path);
      if (count == 0 || count > size) break;
      done += count;
      // Another call at the end of the file would be wasted.
      if (offset + done >= fileSize) break;
    }
    return done;
  }
};

class AfcFile : public PhoneFile {
  /// Makes a call. If the phone is gone, its file is closed.
  template <typename Work>
  auto ask(Work work) {
    try {
      return line_.call(std::move(work));
    } catch (const PhoneError&) {
      isOpen_ = false;
      throw;
    }
  }

 public:
  AfcFile(Line& line, std::uint64_t handle, std::string path, std::uint64_t size, bool readsAhead)
      : line_(line),
        handle_(handle),
        path_(std::move(path)),
        size_(size),
        readsAhead_(readsAhead) {}
  ~AfcFile() override {
    if (!isOpen_) return;
    try {
      line_.call([handle = handle_](afc_client_t client) {
        afc_file_close(client, handle);
        return Done{};
      });
    } catch (const PhoneError&) {
      // If the phone is gone, the file is closed.
      isOpen_ = false;
    }
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
    isOpen_ = false;
    line_.call([handle = handle_, path = path_](afc_client_t client) {
      check(client, afc_file_close(client, handle), FileOperation::read, path);
      return Done{};
    });
  }

  void confirmPosition(std::uint64_t position) override {
    ask([handle = handle_, path = path_, position](afc_client_t client) {
      std::uint64_t actual = 0;
      check(client, afc_file_tell(client, handle, &actual), FileOperation::read, path);
      if (actual == position) return Done{};
      checkPresence(client);
      throw FileError{FileOperation::read, path, EIO};
    });
  }

 private:
  /// Pictures have their metadata in the first tens of kilobytes.
  static constexpr std::uint64_t aheadBytes = 64 * 1024;

  std::size_t readDirectly(std::uint64_t offset, std::span<char> buffer) {
    const Piece piece{bytes_, handle_, path_, size_, position_, offset, buffer.size()};
    const std::size_t count = ask([piece](afc_client_t client) { return piece.read(client); });
    std::memcpy(buffer.data(), bytes_->data(), count);
    position_ = offset + count;
    return count;
  }

  Line& line_;
  std::uint64_t handle_;
  std::string path_;
  std::uint64_t size_;
  bool readsAhead_;
  bool isOpen_ = true;
  std::uint64_t position_ = 0;
  std::shared_ptr<std::vector<char>> bytes_ = std::make_shared<std::vector<char>>();
  std::string window_;
  std::uint64_t windowBegin_ = 0;
};

FileStatus::Type typeOf(const std::string& text) {
  if (text == "S_IFREG") return FileStatus::Type::file;
  if (text == "S_IFDIR") return FileStatus::Type::folder;
  return text == "S_IFLNK" ? FileStatus::Type::link : FileStatus::Type::other;
}

/// Returns the fields of a file by name. The library gives names and values in turn.
std::map<std::string, std::string> infoOf(afc_client_t client, const std::string& path) {
  char** raw = nullptr;
  const afc_error_t error = afc_get_file_info(client, path.c_str(), &raw);
  const TextList list{raw};
  check(client, error, FileOperation::status, path);
  std::map<std::string, std::string> fields;
  for (char** pair = raw; pair != nullptr && pair[0] != nullptr && pair[1] != nullptr; pair += 2) {
    fields[pair[0]] = pair[1];
  }
  return fields;
}

FileStatus statusOf(afc_client_t client, const std::string& path) {
  const auto fields = infoOf(client, path);
  if (!fields.contains("st_size") || !fields.contains("st_ifmt")) checkPresence(client);
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

std::vector<std::string> namesIn(afc_client_t client, const std::string& folder) {
  char** raw = nullptr;
  const afc_error_t error = afc_read_directory(client, folder.c_str(), &raw);
  const TextList list{raw};
  check(client, error, FileOperation::list, folder);
  checkPresence(client);
  std::vector<std::string> names;
  for (char** name = raw; name != nullptr && *name != nullptr; ++name) {
    const std::string_view text = *name;
    const bool isPart = text.find('/') == std::string_view::npos && !text.empty();
    if (isPart && text != "." && text != "..") names.emplace_back(text);
  }
  std::sort(names.begin(), names.end());
  return names;
}

class AfcPhoneFiles : public PhoneFiles {
 public:
  AfcPhoneFiles(std::shared_ptr<afc_client_private> client, std::chrono::milliseconds patience,
                const std::stop_token& stop)
      : line_(std::move(client), patience, stop) {}

  void confirmPresence() override {
    line_.call([](afc_client_t client) {
      checkPresence(client);
      return Done{};
    });
  }
  std::vector<std::string> names(const std::string& folder) override {
    return line_.call([folder](afc_client_t client) { return namesIn(client, folder); });
  }
  FileStatus status(const std::string& path) override {
    return line_.call([path](afc_client_t client) { return statusOf(client, path); });
  }
  std::unique_ptr<PhoneFile> open(const std::string& path, std::uint64_t size,
                                  bool readsAhead) override {
    const std::uint64_t handle = line_.call([path](afc_client_t client) {
      std::uint64_t opened = 0;
      check(client, afc_file_open(client, path.c_str(), AFC_FOPEN_RDONLY, &opened),
            FileOperation::open, path);
      return opened;
    });
    return std::make_unique<AfcFile>(line_, handle, path, size, readsAhead);
  }

 private:
  Line line_;
};

}  // namespace

std::unique_ptr<PhoneFiles> afcPhoneFiles(std::shared_ptr<afc_client_private> client,
                                          std::chrono::milliseconds patience,
                                          const std::stop_token& stop) {
  return std::make_unique<AfcPhoneFiles>(std::move(client), patience, stop);
}

}  // namespace tavrix
