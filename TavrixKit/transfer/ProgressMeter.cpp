#include "transfer/ProgressMeter.h"

#include <algorithm>

#include "foundation/files/AtomicFile.h"

namespace tavrix {

ProgressMeter::ProgressMeter(const TransferPlan& plan, Receiver receiver)
    : receiver_(std::move(receiver)) {
  snapshot_.filesTotal = plan.files.size();
  snapshot_.bytesTotal = plan.totalBytes();
}

template <typename Change>
void ProgressMeter::update(Change change) {
  const std::lock_guard lock{mutex_};
  change(snapshot_);
  if (receiver_) receiver_(snapshot_);
}

void ProgressMeter::began(const PlannedFile& file, TransferStage stage) {
  update([&](TransferProgressSnapshot& snapshot) {
    snapshot.currentFileName = lastPathComponent(file.relativePath);
    snapshot.stage = stage;
    snapshot.stageFraction.reset();
  });
}

void ProgressMeter::received(std::uint64_t bytes) {
  update([&](TransferProgressSnapshot& snapshot) { snapshot.bytesDone += bytes; });
}

void ProgressMeter::verified() {
  update([](TransferProgressSnapshot& snapshot) {
    snapshot.stage = TransferStage::verifying;
    snapshot.stageFraction.reset();
    ++snapshot.verifiedCount;
  });
}

void ProgressMeter::takeBack(std::uint64_t received, bool wasVerified) {
  update([&](TransferProgressSnapshot& snapshot) {
    snapshot.bytesDone -= received;
    if (wasVerified) --snapshot.verifiedCount;
  });
}

void ProgressMeter::converting(const PlannedFile& file, double fraction) {
  update([&](TransferProgressSnapshot& snapshot) {
    snapshot.currentFileName = lastPathComponent(file.relativePath);
    snapshot.stage = TransferStage::converting;
    snapshot.stageFraction = fraction;
  });
}

void ProgressMeter::converted() {
  update([](TransferProgressSnapshot& snapshot) {
    ++snapshot.convertedCount;
    snapshot.stageFraction.reset();
  });
}

void ProgressMeter::finished(const PlannedFile& file, std::uint64_t received) {
  update([&](TransferProgressSnapshot& snapshot) {
    ++snapshot.filesDone;
    snapshot.bytesDone += file.asset.sizeBytes() - std::min(received, file.asset.sizeBytes());
  });
}

}  // namespace tavrix
