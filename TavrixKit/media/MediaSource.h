#pragma once

#include <cstddef>
#include <exception>
#include <span>
#include <string>

#include "media/MediaAsset.h"

namespace tavrix {

/// The destination of one download, chosen by the caller. Receives the bytes of the file from its
/// beginning.
class DownloadDestination {
 public:
  virtual ~DownloadDestination() = default;
  /// May throw any exception to end the download, such as a disk error or a cancellation. A source
  /// does not catch it.
  virtual void append(std::span<const std::byte> bytes) = 0;
};

/// A failure to read one file from the source.
class SourceError : public std::exception {
 public:
  enum class Kind {
    notFound,
    unreadable,
    changedWhileRead,
    unsafeName,
    disconnected,
    notRegular,  ///< a link, a device, a pipe or the like
  };

  SourceError(Kind kind, std::string name, int code = 0)
      : kind_(kind), name_(std::move(name)), code_(code) {}
  Kind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  /// Returns the system's error code (errno), or 0 if there is none.
  int code() const { return code_; }
  const char* what() const noexcept override { return "SourceError"; }

 private:
  Kind kind_;
  std::string name_;
  int code_;
};

/// A source of the bytes of assets: a folder, or a phone on a cable.
class MediaSource {
 public:
  virtual ~MediaSource() = default;
  /// Writes all bytes of an asset to `destination` and then returns. Any exception means that only
  /// this file failed. Failures of the source itself throw SourceError.
  virtual void download(const MediaAsset& asset, DownloadDestination& destination) = 0;
  /// Returns the number of downloads that may run at once, each on a thread of its own.
  virtual int concurrentDownloads() const { return 1; }
};

}  // namespace tavrix
