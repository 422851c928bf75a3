#include "device/cable/AfcPhoneFiles.h"

#include <algorithm>
#include <cstring>

#include "device/cable/PatientThread.h"

namespace tavrix {
namespace {

/// The connection to one phone. The library may wait without a limit on a thread of its own, while
/// the caller waits for a limited time.
class Line {
 public:
  Line(std::shared_ptr<AfcClient> client, std::chrono::milliseconds patience,
       const std::stop_token& stop)
      : client_(std::move(client)), thread_(patience), stop_(stop) {}
  ~Line() {
    thread_.finish([client = std::move(client_)] {});
  }
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  /// Makes requests through the connection. `work` must own everything that it uses. After a call
  /// that was given up, the connection is not used again.
  template <typename Work>
  auto call(Work work) {
    if (client_ == nullptr) throw PhoneError{PhoneError::Kind::gone};
    auto answer =
        thread_.ask([client = client_, work = std::move(work)] { return work(*client); }, stop_);
    if (answer.outcome != PatientThread::Outcome::done) client_.reset();
    if (answer.outcome == PatientThread::Outcome::stopped) {
      throw PhoneError{PhoneError::Kind::stopped};
    }
    if (answer.outcome == PatientThread::Outcome::late) throw PhoneError{PhoneError::Kind::silent};
    return *std::move(answer.result);
  }

 private:
  std::shared_ptr<AfcClient> client_;
  PatientThread thread_;
  std::stop_token stop_;
};

/// The result of calls that return nothing.
struct Done {};

constexpr std::size_t largestRead = 1024 * 1024;

/// Reads up to `wanted` bytes from `offset` on, in pieces. `place` is the current position of the
/// phone in the file; nullopt if it is not known.
struct Piece {
  std::shared_ptr<std::vector<char>> bytes;
  AfcClient::OpenFile file;
  std::uint64_t fileSize = 0;
  std::optional<std::uint64_t> place;
  std::uint64_t offset = 0;
  std::size_t wanted = 0;

  /// Returns the number of bytes that were read.
  std::size_t read(AfcClient& client) const {
    if (offset != place) client.seek(file, offset);
    if (bytes->size() < wanted) bytes->resize(wanted);
    std::size_t done = 0;
    while (done < wanted) {
      const std::size_t size = std::min(wanted - done, largestRead);
      const std::size_t count = client.read(file, std::span{*bytes}.subspan(done, size));
      if (count == 0) break;
      done += count;
      // Another call at the end of the file would be wasted.
      if (offset + done >= fileSize) break;
    }
    return done;
  }
};

class AfcFile : public RangedReader {
 public:
  AfcFile(Line& line, AfcClient::OpenFile file, std::uint64_t size, bool readsAhead)
      : line_(line), file_(std::move(file)), size_(size), readsAhead_(readsAhead) {}
  ~AfcFile() override {
    try {
      line_.call([file = file_](AfcClient& client) {
        client.close(file);
        return Done{};
      });
    } catch (const std::exception&) {
      // Everything that was read is valid all the same, and a connection that ends closes its
      // files.
    }
  }

  std::uint64_t size() const override { return size_; }

  std::size_t read(std::uint64_t offset, std::span<char> buffer) override {
    if (!readsAhead_ || buffer.size() >= aheadBytes) return readDirectly(offset, buffer);
    if (offset < windowBegin_ || offset + buffer.size() > windowBegin_ + window_.size()) {
      const std::uint64_t room = size_ - std::min(offset, size_);
      std::string window(std::max<std::size_t>(buffer.size(), std::min(room, aheadBytes)), '\0');
      window.resize(readDirectly(offset, window));
      window_ = std::move(window);
      windowBegin_ = offset;
    }
    const std::size_t begin = static_cast<std::size_t>(offset - windowBegin_);
    const std::size_t count = std::min(buffer.size(), window_.size() - begin);
    std::memcpy(buffer.data(), window_.data() + begin, count);
    return count;
  }

 private:
  /// Pictures have their metadata in the first tens of kilobytes.
  static constexpr std::uint64_t aheadBytes = 64 * 1024;

  std::size_t readDirectly(std::uint64_t offset, std::span<char> buffer) {
    // Not known after a failure.
    const auto place = std::exchange(position_, std::nullopt);
    const Piece piece{bytes_, file_, size_, place, offset, buffer.size()};
    const std::size_t count = line_.call([piece](AfcClient& client) { return piece.read(client); });
    std::memcpy(buffer.data(), bytes_->data(), count);
    position_ = offset + count;
    return count;
  }

  Line& line_;
  AfcClient::OpenFile file_;
  std::uint64_t size_;
  bool readsAhead_;
  std::optional<std::uint64_t> position_ = 0;  ///< of the phone in the file; nullopt if not known
  std::shared_ptr<std::vector<char>> bytes_ = std::make_shared<std::vector<char>>();
  std::string window_;
  std::uint64_t windowBegin_ = 0;
};

class AfcPhoneFiles : public PhoneFiles {
 public:
  AfcPhoneFiles(std::shared_ptr<AfcClient> client, std::chrono::milliseconds patience,
                const std::stop_token& stop)
      : line_(std::move(client), patience, stop) {}

  std::vector<std::string> names(const std::string& folder) override {
    return line_.call([folder](AfcClient& client) { return client.names(folder); });
  }
  FileStatus status(const std::string& path) override {
    return line_.call([path](AfcClient& client) { return client.status(path); });
  }
  std::unique_ptr<RangedReader> open(const std::string& path, std::uint64_t size,
                                     bool readsAhead) override {
    auto file = line_.call([path](AfcClient& client) { return client.open(path); });
    return std::make_unique<AfcFile>(line_, std::move(file), size, readsAhead);
  }

 private:
  Line line_;
};

}  // namespace

std::unique_ptr<PhoneFiles> afcPhoneFiles(std::shared_ptr<AfcClient> client,
                                          std::chrono::milliseconds patience,
                                          const std::stop_token& stop) {
  return std::make_unique<AfcPhoneFiles>(std::move(client), patience, stop);
}

}  // namespace tavrix
