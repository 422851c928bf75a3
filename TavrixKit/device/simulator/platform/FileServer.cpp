#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "device/afc/AfcPacket.h"
#include "device/simulator/platform/Bench.h"
#include "foundation/Text.h"

namespace tavrix::simulator {
namespace {

constexpr std::uint64_t largestBody = 1 << 16;
constexpr std::uint64_t largestRead = 8 << 20;

class Files {
 public:
  Files(Bench& bench, std::size_t phone, Stream& stream)
      : bench_(bench), index_(phone), stream_(stream) {}

  void serve() {
    std::array<char, AfcHead::bytes> head{};
    while (stream_.read(head)) {
      const auto request = AfcHead::decode(head);
      if (!request || request->bodyLength > largestBody) return;
      std::string parameters(request->bodyLength, '\0');
      if (!stream_.read(parameters)) return;
      const auto latency = bench_.phone(index_).latency;
      if (latency.count() > 0) std::this_thread::sleep_for(latency);
      const auto part = bench_.beginCall(index_);
      if (!part) return;
      part_ = *part;
      number_ = request->number;
      // Counted before it is answered, so that a client that has the answer finds it counted.
      ++bench_.fileCalls;
      if (!answer(request->operation, parameters)) return;
    }
  }

 private:
  struct OpenFile {
    FileDescriptor file;
    std::string path;
  };

  bool answer(AfcOperation operation, const std::string& parameters) {
    switch (operation) {
      case AfcOperation::readFolder:
        return listFolder(pathIn(parameters, 0));
      case AfcOperation::fileInfo:
        return tellOfFile(pathIn(parameters, 0));
      case AfcOperation::openFile:
        return open(parameters);
      case AfcOperation::readFile:
        return read(numberAt(parameters, 0), numberAt(parameters, 1));
      case AfcOperation::seekFile:
        return seek(parameters);
      case AfcOperation::closeFile:
        return sendStatus(files_.erase(numberAt(parameters, 0)) > 0 ? AfcStatus::success
                                                                    : AfcStatus::invalidArgument);
      default:
        return sendStatus(AfcStatus::notSupported);
    }
  }

  bool send(AfcOperation operation, const std::string& parameters, std::string_view rest,
            std::optional<std::uint64_t> cut = std::nullopt) {
    std::string packet =
        AfcHead{operation, number_, parameters.size() + rest.size(), parameters.size()}.encode();
    packet += parameters;
    if (part_ == AnswerPart::none) return false;
    if (part_ == AnswerPart::half) return sendHalf(packet.append(rest));
    return stream_.write(packet) && stream_.write(rest.substr(0, cut.value_or(rest.size())));
  }
  bool sendHalf(std::string_view packet) {
    stream_.write(packet.substr(0, packet.size() / 2));
    bench_.vanish(index_);
    return false;
  }
  bool sendStatus(AfcStatus code) {
    const auto number = static_cast<std::uint64_t>(code);
    return send(AfcOperation::status, AfcBody::ofNumber(number), "");
  }

  static std::uint64_t numberAt(const std::string& parameters, std::size_t index) {
    return AfcBody::numberAt(parameters, index).value_or(0);
  }
  static std::string lines(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) result += AfcBody::ofText(text);
    return result;
  }

  /// Returns the path on the disk, or nullopt if it would lead out of the phone.
  std::optional<std::string> pathIn(const std::string& parameters, std::size_t begin) const {
    const std::string rest = parameters.substr(std::min(begin, parameters.size()));
    const std::string path = rest.substr(0, rest.find('\0'));
    const std::filesystem::path parts{path};
    const bool leadsOut =
        std::any_of(parts.begin(), parts.end(), [](const auto& part) { return part == ".."; });
    if (leadsOut) return std::nullopt;
    return bench_.phone(index_).root + "/" + path;
  }

  static AfcStatus statusOf(int code) {
    if (code == ENOENT || code == ENOTDIR) return AfcStatus::notFound;
    return code == EACCES ? AfcStatus::denied : AfcStatus::ioError;
  }

  bool listFolder(const std::optional<std::string>& path) {
    if (!path) return sendStatus(AfcStatus::denied);
    if (isUnreadable(*path)) return sendStatus(AfcStatus::ioError);
    std::error_code error;
    std::vector<std::string> names{".", ".."};
    for (const auto& entry : std::filesystem::directory_iterator{*path, error}) {
      names.push_back(entry.path().filename().string());
    }
    if (error) return sendStatus(statusOf(error.value()));
    return send(AfcOperation::data, "", lines(names));
  }

  bool tellOfFile(const std::optional<std::string>& path) {
    struct stat raw{};
    if (!path) return sendStatus(AfcStatus::denied);
    if (::lstat(path->c_str(), &raw) != 0) return sendStatus(statusOf(errno));
    const std::string time =
        std::to_string(raw.st_mtim.tv_sec * 1'000'000'000LL + raw.st_mtim.tv_nsec);
    const char* type = S_ISDIR(raw.st_mode) ? "S_IFDIR" : "S_IFREG";
    if (S_ISLNK(raw.st_mode)) type = "S_IFLNK";
    return send(
        AfcOperation::data, "",
        lines({"st_size", std::to_string(raw.st_size), "st_blocks", std::to_string(raw.st_blocks),
               "st_nlink", "1", "st_ifmt", type, "st_mtime", time, "st_birthtime", time}));
  }

  bool open(const std::string& parameters) {
    const auto path = pathIn(parameters, sizeof(std::uint64_t));
    if (!path || numberAt(parameters, 0) != afcReadOnly) return sendStatus(AfcStatus::denied);
    std::error_code error;
    if (std::filesystem::is_directory(*path, error)) return sendStatus(AfcStatus::isFolder);
    FileDescriptor file{::open(path->c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    if (!file.isOpen()) return sendStatus(statusOf(errno));
    files_[++lastHandle_] = {std::move(file), *path};
    return send(AfcOperation::openedFile, AfcBody::ofNumber(lastHandle_), "");
  }

  bool isUnreadable(const std::string& path) const {
    const auto& unreadable = bench_.phone(index_).unreadable;
    return std::any_of(unreadable.begin(), unreadable.end(),
                       [&](const std::string& end) { return path.ends_with(end); });
  }
  bool read(std::uint64_t handle, std::uint64_t size) {
    const auto found = files_.find(handle);
    if (found == files_.end() || size > largestRead) return sendStatus(AfcStatus::invalidArgument);
    if (isUnreadable(found->second.path)) return sendStatus(AfcStatus::ioError);
    if (buffer_.size() < size) buffer_.resize(size);
    const ssize_t count = ::read(found->second.file.number(), buffer_.data(), size);
    if (count < 0) return sendStatus(statusOf(errno));
    const auto length = static_cast<std::uint64_t>(count);
    const std::string_view bytes{buffer_.data(), length};
    if (!bench_.awaitSpeech(index_, length)) return false;
    const std::uint64_t allowed = bench_.allowance(index_, length);
    if (allowed == length) return send(AfcOperation::data, "", bytes);
    send(AfcOperation::data, "", bytes, allowed);
    bench_.vanish(index_);
    return false;
  }

  bool seek(const std::string& parameters) {
    const auto found = files_.find(numberAt(parameters, 0));
    if (found == files_.end()) return sendStatus(AfcStatus::invalidArgument);
    const auto place =
        ::lseek(found->second.file.number(), static_cast<off_t>(numberAt(parameters, 2)),
                static_cast<int>(numberAt(parameters, 1)));
    return sendStatus(place < 0 ? AfcStatus::invalidArgument : AfcStatus::success);
  }

  Bench& bench_;
  std::size_t index_;
  Stream& stream_;
  AnswerPart part_ = AnswerPart::whole;  ///< of the answer to the current call
  std::uint64_t number_ = 0;
  std::uint64_t lastHandle_ = 0;
  std::map<std::uint64_t, OpenFile> files_;
  std::string buffer_;
};

}  // namespace

void serveFiles(Bench& bench, std::size_t phone, Stream& stream) {
  if (!bench.awaitSpeech(phone)) return;
  if (bench.phone(phone).usesTLS && !stream.secure(bench.keys().context())) return;
  Files{bench, phone, stream}.serve();
}

}  // namespace tavrix::simulator
