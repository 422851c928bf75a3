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

/// Reads files from beginning to end and digests them, each byte once. One for each thread.
class FileDigester {
 public:
  struct Result {
    std::string sha256;       ///< lower-case hexadecimal
    std::uint64_t bytes = 0;  ///< that were read
  };
  /// Told of each piece that was read.
  using Received = std::function<void(std::uint64_t bytes)>;

  explicit FileDigester(std::stop_token stop);

  /// A regular file of a folder; nothing when it was asked to stop. Throws FileError.
  std::optional<Result> digest(const Folder& folder, const std::string& path,
                               const Received& received = {});
  /// A file of a source; nothing when it was asked to stop, or when the source gives more bytes
  /// than it listed. Throws what the source throws.
  std::optional<Result> digest(MediaSource& source, const MediaAsset& asset,
                               const Received& received = {});

 private:
  static constexpr std::size_t bufferBytes = std::size_t{512} << 10U;

  std::stop_token stop_;
  Sha256 digest_;
  std::unique_ptr<char[]> buffer_;
};

/// As many threads as the machine runs at once, at least one.
unsigned workerCount();

/// Does the pieces of work 0 to `count` - 1, each once, taken in their order by `threads` threads,
/// of which each has a digester of its own. Asked to stop, begins no more. An exception of one
/// piece of work ends all and is thrown.
void digestInParallel(std::size_t count, unsigned threads, const std::stop_token& stop,
                      const std::function<void(std::size_t index, FileDigester& digester)>& work);

/// The order in which to read files of these sizes, as indices: large ones first, the largest
/// ahead, so that no thread is left alone with one at the end; then the others as they stand, as
/// they probably lie on the disk.
std::vector<std::size_t> readingOrder(const std::vector<std::uint64_t>& sizes);

}  // namespace tavrix
