#include "device/thumbnails/PreviewFetching.h"

#include <algorithm>
#include <cerrno>
#include <exception>

#include "foundation/Text.h"
#include "foundation/files/FileError.h"
#include "transfer/FileNames.h"

namespace tavrix {
namespace {

using Kind = PreviewFailure::Kind;

/// Thrown between two pieces of a file if it is not wanted any more.
class Unwanted : public std::exception {};
/// Thrown when the source delivers more or less than it had listed.
class WrongSize : public std::exception {};

class CountingDestination : public DownloadDestination {
 public:
  CountingDestination(const PreviewOrder& order, WritableFile& file) : order_(order), file_(file) {}

  void append(std::span<const std::byte> bytes) override {
    if (order_.stop.stop_requested()) throw Unwanted{};
    received_ += bytes.size();
    // A file that grows must not fill the disk.
    if (received_ > order_.asset.sizeBytes()) throw WrongSize{};
    file_.append(bytes);
    if (order_.received) order_.received(received_);
  }
  std::uint64_t received() const { return received_; }

 private:
  const PreviewOrder& order_;
  WritableFile& file_;
  std::uint64_t received_ = 0;
};

/// Returns the name of the phone as a path component that viewers can show.
std::string safeName(std::string_view name) {
  std::string safe = printable(name);
  std::replace(safe.begin(), safe.end(), '/', '_');
  return fittingName(std::move(safe));
}

PreviewFailure failureOf(const FileError& error) {
  const bool isFull = error.code() == ENOSPC || error.code() == EDQUOT;
  return {isFull ? Kind::diskFull : Kind::notWritable, std::nullopt, error.code()};
}

PreviewResult fetched(PreviewFolder& folder, const PreviewOrder& order, const std::string& name) {
  std::unique_ptr<MediaSource> source;
  try {
    source = order.open(order.stop);
  } catch (const FileError& error) {
    return PreviewFailure{Kind::sourceFailed, std::nullopt, error.code()};
  }
  try {
    return folder.add(order.key, name, order.asset.sizeBytes(), [&](WritableFile& file) {
      CountingDestination destination{order, file};
      source->download(order.asset, destination);
      if (order.stop.stop_requested()) throw Unwanted{};
      if (destination.received() != order.asset.sizeBytes()) throw WrongSize{};
    });
  } catch (const FileError& error) {
    return failureOf(error);
  }
}

}  // namespace

std::optional<PreviewResult> fetchPreview(PreviewFolder& folder, const PreviewOrder& order) {
  const std::string name = safeName(order.asset.name());
  if (!isPictureKind(mediaKindOfFileName(name))) return PreviewFailure{Kind::notAPicture};
  if (auto path = folder.find(order.key)) return *std::move(path);
  if (order.open == nullptr || order.stop.stop_requested()) return std::nullopt;
  PreviewResult result;
  try {
    result = fetched(folder, order, name);
  } catch (const WrongSize&) {
    result = PreviewFailure{Kind::wrongSize};
  } catch (const SourceError& error) {
    result = PreviewFailure{Kind::sourceFailed, error.kind(), error.code()};
  } catch (...) {
    result = PreviewFailure{Kind::sourceFailed};
  }
  // A source that is taken away while it is read may fail in any way.
  const bool isFailure = std::holds_alternative<PreviewFailure>(result);
  if (isFailure && order.stop.stop_requested()) return std::nullopt;
  return result;
}

}  // namespace tavrix
