#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

#include "foundation/Digest.h"
#include "foundation/files/Folder.h"
#include "media/MediaSource.h"

namespace tavrix {

/// Computes SHA-256 digests of files, reading each byte once. Each thread needs its own digester.
class FileDigester {
 public:
  struct Result {
    std::string sha256;       ///< lower-case hexadecimal
    std::uint64_t bytes = 0;  ///< bytes that were read
  };
  /// Called with the size of each piece that was read.
  using Received = std::function<void(std::uint64_t bytes)>;

  explicit FileDigester(std::stop_token stop);

  /// Digests a regular file of a folder. Returns nullopt if a stop was requested. Throws FileError.
  std::optional<Result> digest(const Folder& folder, const std::string& path,
                               const Received& received = {});
  /// Digests a file of a source. Returns nullopt if a stop was requested, or if the source delivers
  /// more bytes than it listed. Rethrows the errors of the source.
  std::optional<Result> digest(MediaSource& source, const MediaAsset& asset,
                               const Received& received = {});

 private:
  static constexpr std::size_t bufferBytes = std::size_t{512} << 10U;

  std::stop_token stop_;
  Sha256 digest_;
  std::unique_ptr<char[]> buffer_;
};

/// Returns the number of hardware threads of the machine, at least 1.
unsigned workerCount();

/// Calls `work` once for each index from 0 to `count` - 1, in order, on `threads` threads, each
/// with its own digester. After a stop request no further call begins. The first exception ends all
/// work and is rethrown.
void digestInParallel(std::size_t count, unsigned threads, const std::stop_token& stop,
                      const std::function<void(std::size_t index, FileDigester& digester)>& work);

/// Returns the order, as indices, in which to read files of these sizes. Large files come first,
/// the largest ahead, so that no thread is left alone with one at the end. The others keep their
/// order, which is probably their order on the disk.
std::vector<std::size_t> readingOrder(const std::vector<std::uint64_t>& sizes);

}  // namespace tavrix
