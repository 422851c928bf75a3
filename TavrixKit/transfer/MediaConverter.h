#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <stop_token>
#include <string>

#include "foundation/files/Folder.h"
#include "transfer/ConversionFailure.h"
#include "transfer/TransferPlan.h"

namespace tavrix {

/// Thrown if a conversion fails; the unconverted file is kept.
class ConversionError : public std::exception {
 public:
  explicit ConversionError(ConversionFailure failure) : failure_(failure) {}
  ConversionFailure failure() const { return failure_; }
  const char* what() const noexcept override { return "ConversionError"; }

 private:
  ConversionFailure failure_;
};

/// Called repeatedly with the converted fraction of a file, 0 to 1, on the converting thread.
using ConversionProgress = std::function<void(double fraction)>;

/// Re-encodes stills as JPEG and videos as H.264. Safe to use from several threads.
class MediaConverter {
 public:
  virtual ~MediaConverter() = default;
  /// Reads the file `input` of a folder, an asset's original bytes, and writes the converted file
  /// to `output`, a path of the same folder that must not exist. Returns the number of bytes
  /// written. Throws ConversionError if the file is to stay as it is, also if `stop` was requested,
  /// and FileError if `output` cannot be written; the caller then removes anything left at
  /// `output`.
  virtual std::uint64_t convert(const MediaAsset& asset, const PlannedConversion& conversion,
                                Folder& folder, const std::string& input, const std::string& output,
                                const ConversionProgress& progress, std::stop_token stop) = 0;
};

}  // namespace tavrix
