#include "transfer/TransferWorker.h"

#include <algorithm>

#include "foundation/ProcessLimits.h"
#include "foundation/Text.h"
#include "foundation/files/AtomicFile.h"
#include "transfer/FileNames.h"
#include "transfer/SafeNames.h"
#include "transfer/TransferFailures.h"

namespace tavrix {
namespace {

/// Thrown through a source to abort a download that is no longer needed.
struct DownloadStopped {};

/// Thrown through a source at the first byte that it did not list.
struct DownloadTooLong {};

/// Receives a download: counts, digests and writes the bytes, as many as the source listed.
class Download : public DownloadDestination {
 public:
  Download(WritableFile& file, Sha256& digest, ProgressMeter& meter, std::uint64_t expected,
           const std::stop_token& stop, std::uint64_t& received)
      : file_(file),
        digest_(digest),
        meter_(meter),
        expected_(expected),
        stop_(stop),
        received_(received) {}

  void append(std::span<const std::byte> bytes) override {
    if (stop_.stop_requested()) throw DownloadStopped{};
    if (bytes.size() > expected_ - received_) throw DownloadTooLong{};
    if (begin_.size() < beginBytes) {
      const auto more = bytes.first(std::min(bytes.size(), beginBytes - begin_.size()));
      begin_.append(reinterpret_cast<const char*>(more.data()), more.size());
    }
    file_.append(bytes);
    digest_.add(bytes);
    received_ += bytes.size();
    meter_.received(bytes.size());
  }

  /// Returns true if the bytes are those of a picture of another format than JPEG.
  bool isOtherPicture() const {
    const std::string_view begin = begin_;
    return begin.starts_with("\x89PNG\r\n\x1A\n") || begin.starts_with("GIF8") ||
           (begin.starts_with("RIFF") && begin.ends_with("WEBP")) ||
           (begin.size() == beginBytes && begin.substr(4, 4) == "ftyp");
  }

 private:
  static constexpr std::size_t beginBytes = 12;  ///< enough to tell formats apart

  std::string begin_;
  WritableFile& file_;
  Sha256& digest_;
  ProgressMeter& meter_;
  std::uint64_t expected_;
  const std::stop_token& stop_;
  std::uint64_t& received_;
};

/// Holds one slot of a semaphore during its lifetime.
template <typename Slots>
class HeldSlot {
 public:
  explicit HeldSlot(Slots& slots) : slots_(slots) { slots_.acquire(); }
  ~HeldSlot() { slots_.release(); }
  HeldSlot(const HeldSlot&) = delete;
  HeldSlot& operator=(const HeldSlot&) = delete;

 private:
  Slots& slots_;
};

/// Returns true if every part of a planned path is a plain name.
bool staysInside(const std::string& path) {
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find('/', begin), path.size());
    if (!isSafePathComponent(path.substr(begin, end - begin))) return false;
    begin = end + 1;
  }
  return true;
}

/// Returns true if a name, read as a path, could lead upwards.
bool isAscending(std::string_view name) { return name.find("..") != std::string_view::npos; }

/// Returns the path with the case of the first letter of its last part changed; unchanged if it has
/// no letter.
std::string withOtherCase(std::string path) {
  for (std::size_t i = path.rfind('/') + 1; i < path.size(); ++i) {
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    if (!isLetter(path[i])) continue;
    path[i] = static_cast<char>(path[i] ^ 0x20);
    break;
  }
  return path;
}

bool isComplete(const FileStatus& status, const PlannedFile& file) {
  if (status.type != FileStatus::Type::file) return false;
  return isConverted(file.conversion) ? status.size > 0 : status.size == file.asset.sizeBytes();
}

}  // namespace

std::string TransferEngine::fallbackName(const PlannedFile& file) {
  return withExtensionOf(lastPathComponent(file.relativePath), file.asset.name());
}

void TransferWorker::work() noexcept {
  try {
    while (const auto index = run_.nextIndex()) {
      run_.carryOut([&](bool isAlone) { return handle(*index, isAlone); });
      if (isBatchFull()) commit();
    }
    commit();
  } catch (...) {
    run_.halt(std::current_exception());
    try {
      // Files that are ready may still get their names, even on a full disk.
      commit();
    } catch (...) {
      discardBatch();
    }
  }
}

bool TransferWorker::handle(std::size_t index, bool isAlone) {
  const Language language = run_.setup_.language;
  received_ = fetched_ = 0;
  isVerified_ = false;
  try {
    run_.meter_.began(planned(index), TransferStage::copying);
    if (!isSettledWithoutFetching(index)) fetch(index);
  } catch (const DownloadStopped&) {
    // The run ends; the file has no outcome.
  } catch (const SourceError& error) {
    if (!isAlone && lacksDescriptors(error.code())) return takeBack();
    fail(index, TransferFailures::of(error, language));
  } catch (const FileError& error) {
    if (!isAlone && lacksDescriptors(error.code())) return takeBack();
    if (stopsRun(error, run_.destination_)) throw;
    fail(index, TransferFailures::of(error, language));
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    fail(index, TransferFailures::sourceFailed(language));
  }
  return true;
}

bool TransferWorker::takeBack() {
  run_.ledger_.takeBack(fetched_);
  run_.meter_.takeBack(received_, isVerified_);
  return false;
}

bool TransferWorker::isSettledWithoutFetching(std::size_t index) {
  const PlannedFile& file = planned(index);
  const Language language = run_.setup_.language;
  if (!isSafePathComponent(file.asset.name())) {
    const bool leadsOut = isAscending(file.asset.name()) && !staysInside(file.relativePath);
    fail(index, leadsOut ? TransferFailures::leavesDestination(language)
                         : TransferFailures::hasUnsafeName(language));
    return true;
  }
  if (!staysInside(file.relativePath)) {
    fail(index, TransferFailures::leavesDestination(language));
    return true;
  }
  if (run_.setup_.replacement) return false;
  const auto status = statusOf(file);
  if (!status || !isComplete(*status, file) || mayBeAnothers(file, *status)) return false;
  run_.ledger_.landed(
      index,
      {.kind = FileOutcome::AlreadyThere{}, .path = file.relativePath, .size = status->size});
  run_.meter_.finished(file, 0);
  return true;
}

std::optional<FileStatus> TransferWorker::statusOf(const PlannedFile& file) const {
  try {
    return run_.destination_.status(file.relativePath);
  } catch (const FileError& error) {
    if (SafeNames::isRefusal(error, file.relativePath)) return std::nullopt;
    throw;
  }
}

bool TransferWorker::mayBeAnothers(const PlannedFile& file, const FileStatus& status) const {
  const std::string twin = withOtherCase(file.relativePath);
  if (twin == file.relativePath) return false;
  const auto other = run_.destination_.status(twin);
  return other && *other == status;
}

void TransferWorker::fetch(std::size_t index) {
  const PlannedFile& file = planned(index);
  ReadyFile ready{index, partPath(file.relativePath), file.relativePath, {}, 0, {}};
  try {
    if (!download(index, ready)) {
      removeQuietly(run_.destination_, ready.part);
      return;
    }
    if (isConverted(file.conversion)) convert(ready);
  } catch (...) {
    removeQuietly(run_.destination_, ready.part);
    throw;
  }
  if (batch_.empty()) batchBegin_ = std::chrono::steady_clock::now();
  batchBytes_ += ready.size;
  batch_.push_back(std::move(ready));
}

std::unique_ptr<WritableFile> TransferWorker::createPart(ReadyFile& ready) {
  Folder& destination = run_.destination_;
  const auto create = [&] {
    destination.makeFolders(parentPath(ready.target));
    return destination.createFile(ready.part);
  };
  try {
    return create();
  } catch (const FileError& error) {
    const std::string safe = SafeNames::safePath(ready.target);
    // A repair puts files back exactly where they were.
    if (!SafeNames::isRefusal(error, ready.target) || safe == ready.target ||
        run_.setup_.replacement)
      throw;
    ready.part = SafeNames::partPath(ready.target);
    ready.target = safe;
    ready.hasSafeName = true;
  }
  return create();
}

bool TransferWorker::download(std::size_t index, ReadyFile& ready) {
  const PlannedFile& file = planned(index);
  const HeldSlot slot{run_.downloads_};
  if (run_.isHalted_ || run_.stop_.stop_requested()) throw DownloadStopped{};
  const std::uint64_t expected = file.asset.sizeBytes();
  const auto part = createPart(ready);
  digest_.restart();
  Download download{*part, digest_, run_.meter_, expected, run_.stop_, received_};
  std::optional<std::uint64_t> wholeSize;  // stays absent if there are too many bytes
  try {
    run_.source_.download(file.asset, download);
    wholeSize = received_;
  } catch (const DownloadTooLong&) {
  }
  fetched_ = received_;
  run_.ledger_.fetched(fetched_);
  if (wholeSize != expected) {
    const Language language = run_.setup_.language;
    const std::string_view name = file.asset.name();
    writeLog(run_.log_, "FAIL {}: {}", PrivateField{name},
             TransferFailures::sizesText(expected, wholeSize, language));
    fail(index, TransferFailures::hasOtherSize(name, expected, wholeSize, language));
    return false;
  }
  part->startWriteback();
  part->close();
  // After the file was closed, because some volumes date a file then.
  if (const auto date = file.asset.captureDate()) setDate(ready.part, *date);
  ready.sha256 = digest_.finish();
  ready.size = expected;
  ready.isMisnamed = isJpegName(lastPathComponent(ready.target)) && !isConverted(file.conversion) &&
                     download.isOtherPicture();
  if (const auto& replacement = run_.setup_.replacement) {
    if (auto refusal = replacement->refusal(file, ready.sha256)) {
      fail(index, *std::move(refusal));
      return false;
    }
  }
  run_.meter_.verified();
  isVerified_ = true;
  return true;
}

void TransferWorker::setDate(const std::string& part, Instant date) const {
  try {
    run_.destination_.setModificationTime(part, date);
  } catch (const FileError& error) {
    // A volume that does not keep such dates still keeps the picture.
    if (stopsRun(error, run_.destination_)) throw;
  }
}

std::uint64_t TransferWorker::convertInto(const std::string& output, const ReadyFile& ready) {
  const PlannedFile& file = planned(ready.index);
  const HeldSlot slot{run_.conversions_};
  const std::stop_token stop = run_.conversionStop_.get_token();
  if (stop.stop_requested()) throw DownloadStopped{};
  run_.meter_.converting(file, 0);
  try {
    return run_.setup_.converter->convert(
        file.asset, file.conversion, run_.destination_, ready.part, output,
        [&](double fraction) { run_.meter_.converting(file, fraction); }, stop);
  } catch (const ConversionError&) {
    // A conversion that a stop aborted proves nothing about the file.
    if (stop.stop_requested()) throw DownloadStopped{};
    throw;
  }
}

void TransferWorker::convert(ReadyFile& ready) {
  const PlannedFile& file = planned(ready.index);
  if (run_.setup_.converter == nullptr) return keepOriginal(ready, ConversionFailure::failed);
  Folder& destination = run_.destination_;
  const std::string output = ready.hasSafeName ? SafeNames::convertedPartPath(file.relativePath)
                                               : convertedPartPath(file.relativePath);
  removeQuietly(run_.destination_, output);
  try {
    const std::uint64_t reported = convertInto(output, ready);
    if (run_.conversionStop_.stop_requested()) throw DownloadStopped{};
    const auto status = destination.status(output);
    if (!status || status->size == 0) throw ConversionError{ConversionFailure::wrongResult};
    if (status->size != reported) run_.ledger_.sizeMismatched();
    if (const auto date = file.asset.captureDate()) setDate(output, *date);
    ready.sha256 = landing_.digestOf(output);
    ready.size = status->size;
  } catch (const ConversionError& error) {
    removeQuietly(run_.destination_, output);
    return keepOriginal(ready, error.failure());
  } catch (...) {
    removeQuietly(run_.destination_, output);
    throw;
  }
  removeQuietly(run_.destination_, ready.part);
  ready.part = output;
  run_.meter_.converted();
}

void TransferWorker::keepOriginal(ReadyFile& ready, ConversionFailure failure) {
  const PlannedFile& file = planned(ready.index);
  const std::string name = TransferEngine::fallbackName(file);
  const std::string folder = parentPath(file.relativePath);
  ready.target = folder.empty() ? name : folder + "/" + name;
  if (ready.hasSafeName) ready.target = SafeNames::safePath(ready.target);
  ready.keptBecause = failure;
  writeLog(run_.log_, "convert-fallback {}: {}", PrivateField{name}, PrivateField{textOf(failure)});
}

bool TransferWorker::isBatchFull() const {
  const auto& limits = run_.setup_.limits;
  return !batch_.empty() && (batch_.size() >= limits.files || batchBytes_ >= limits.bytes ||
                             std::chrono::steady_clock::now() - batchBegin_ >= limits.wait);
}

void TransferWorker::commit() {
  if (batch_.empty()) return;
  run_.syncVolume();
  // If the user moves the folder away during the run, the files must not follow it.
  if (!run_.destination_.exists())
    throw FileError{FileOperation::status, run_.destination_.path(), ENOENT};
  std::reverse(batch_.begin(), batch_.end());
  while (!batch_.empty()) {
    ReadyFile ready = std::move(batch_.back());
    batch_.pop_back();
    run_.carryOut([&](bool isAlone) { return land(ready, isAlone); });
  }
  batchBytes_ = 0;
}

bool TransferWorker::land(ReadyFile& ready, bool isAlone) {
  const PlannedFile& file = planned(ready.index);
  try {
    std::string path;
    const bool wasThere = landing_.giveName(ready, path);
    FileOutcome::Kind kind = FileOutcome::Copied{};
    if (ready.keptBecause) {
      kind = FileOutcome::KeptOriginal{*ready.keptBecause};
    } else if (wasThere) {
      kind = FileOutcome::AlreadyThere{};
    }
    run_.ledger_.landed(ready.index, {.kind = kind,
                                      .path = path,
                                      .size = ready.size,
                                      .bytesWritten = wasThere ? 0 : ready.size,
                                      .sha256 = ready.sha256,
                                      .hasSafeName = ready.hasSafeName,
                                      .isMisnamed = ready.isMisnamed});
    run_.meter_.finished(file, file.asset.sizeBytes());
  } catch (const FileError& error) {
    if (!isAlone && lacksDescriptors(error.code())) return false;
    removeQuietly(run_.destination_, ready.part);
    if (stopsRun(error, run_.destination_)) throw;
    run_.ledger_.failed(ready.index, TransferFailures::of(error, run_.setup_.language));
    run_.meter_.finished(file, file.asset.sizeBytes());
  }
  return true;
}

void TransferWorker::discardBatch() noexcept {
  for (const ReadyFile& ready : batch_) removeQuietly(run_.destination_, ready.part);
  batch_.clear();
}

void TransferWorker::fail(std::size_t index, FileOutcome::Failed failure) {
  run_.ledger_.failed(index, std::move(failure));
  run_.meter_.finished(planned(index), received_);
}

}  // namespace tavrix
