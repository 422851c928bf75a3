#include "transfer/FileDigester.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <numeric>
#include <thread>

namespace tavrix {
namespace {

constexpr std::uint64_t largeFileBytes = std::uint64_t{32} << 20U;

/// Thrown through a source to abort a download that is no longer needed.
struct DigestStopped {};

class DigestingDestination : public DownloadDestination {
 public:
  DigestingDestination(Sha256& digest, std::uint64_t expected, const std::stop_token& stop,
                       const FileDigester::Received& received)
      : digest_(digest), expected_(expected), stop_(stop), received_(received) {}

  void append(std::span<const std::byte> bytes) override {
    bytes_ += bytes.size();
    if (bytes_ > expected_ || stop_.stop_requested()) throw DigestStopped{};
    digest_.add(bytes);
    if (received_) received_(bytes.size());
  }
  std::uint64_t bytes() const { return bytes_; }

 private:
  Sha256& digest_;
  std::uint64_t expected_;
  const std::stop_token& stop_;
  const FileDigester::Received& received_;
  std::uint64_t bytes_ = 0;
};

}  // namespace

FileDigester::FileDigester(std::stop_token stop)
    : stop_(std::move(stop)), buffer_(std::make_unique<char[]>(bufferBytes)) {}

std::optional<FileDigester::Result> FileDigester::digest(const Folder& folder,
                                                         const std::string& path,
                                                         const Received& received) {
  const auto file = folder.openFile(path);
  const std::span<char> buffer{buffer_.get(), bufferBytes};
  digest_.restart();
  Result result;
  for (std::size_t count = 0; (count = file->read(buffer)) > 0;) {
    if (stop_.stop_requested()) return std::nullopt;
    digest_.add(std::as_bytes(buffer.first(count)));
    result.bytes += count;
    if (received) received(count);
  }
  result.sha256 = digest_.finish();
  return result;
}

std::optional<FileDigester::Result> FileDigester::digest(MediaSource& source,
                                                         const MediaAsset& asset,
                                                         const Received& received) {
  digest_.restart();
  DigestingDestination destination{digest_, asset.sizeBytes(), stop_, received};
  try {
    source.download(asset, destination);
  } catch (const DigestStopped&) {
    return std::nullopt;
  }
  return Result{digest_.finish(), destination.bytes()};
}

unsigned workerCount() { return std::max(1U, std::thread::hardware_concurrency()); }

void digestInParallel(std::size_t count, unsigned threads, const std::stop_token& stop,
                      const std::function<void(std::size_t, FileDigester&)>& work) {
  std::atomic<std::size_t> next = 0;
  std::atomic<bool> isHalted = false;
  std::mutex mutex;
  std::exception_ptr cause;
  const auto run = [&] {
    try {
      FileDigester digester{stop};
      while (!isHalted && !stop.stop_requested()) {
        const std::size_t index = next++;
        if (index >= count) return;
        work(index, digester);
      }
    } catch (...) {
      const std::lock_guard lock{mutex};
      if (!cause) cause = std::current_exception();
      isHalted = true;
    }
  };
  {
    std::vector<std::jthread> helpers;
    for (unsigned i = 1; i < threads && i < count; ++i) helpers.emplace_back(run);
    run();
  }
  if (cause) std::rethrow_exception(cause);
}

std::vector<std::size_t> readingOrder(const std::vector<std::uint64_t>& sizes) {
  std::vector<std::size_t> order(sizes.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto weight = [&](std::size_t i) { return sizes[i] < largeFileBytes ? 0 : sizes[i]; };
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return weight(a) > weight(b); });
  return order;
}

}  // namespace tavrix
