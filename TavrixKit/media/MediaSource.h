#pragma once

#include <cstddef>
#include <exception>
#include <span>
#include <string>

#include "media/MediaAsset.h"

namespace tavrix {

/// The file, chosen by the caller, that receives the bytes of one download from its beginning.
class DownloadDestination {
 public:
  virtual ~DownloadDestination() = default;
  /// May throw whatever ends the download: a failure of the disk, a cancel. A source lets it pass.
  virtual void append(std::span<const std::byte> bytes) = 0;
};

/// A failure to read one file from the source.
class SourceError : public std::exception {
 public:
  enum class Kind { notFound, unreadable, changedWhileRead, unsafeName, disconnected };

  SourceError(Kind kind, std::string name, int code = 0)
      : kind_(kind), name_(std::move(name)), code_(code) {}
  Kind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  /// The system's own code (errno), 0 when there is none.
  int code() const { return code_; }
  const char* what() const noexcept override { return "SourceError"; }

 private:
  Kind kind_;
  std::string name_;
  int code_;
};

/// Where the bytes of assets come from: a folder, a phone on a cable.
class MediaSource {
 public:
  virtual ~MediaSource() = default;
  /// Writes the complete bytes of an asset to `destination` and returns only then. Any exception
  /// fails this one file; the source's own are SourceError.
  virtual void download(const MediaAsset& asset, DownloadDestination& destination) = 0;
  /// How many downloads may run at once, each on a thread of its own.
  virtual int concurrentDownloads() const { return 1; }
};

}  // namespace tavrix
