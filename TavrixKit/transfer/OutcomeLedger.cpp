#include "transfer/OutcomeLedger.h"

#include "foundation/files/AtomicFile.h"

namespace tavrix {

std::string_view textOf(const FileOutcome::Kind& kind) {
  constexpr std::string_view texts[] = {"failed", "copied", "alreadyThere", "keptOriginal"};
  return texts[kind.index()];
}

void OutcomeLedger::fetched(std::uint64_t bytes) {
  const std::lock_guard lock{mutex_};
  counters_.bytesCopied += bytes;
}

void OutcomeLedger::takeBack(std::uint64_t bytes) {
  const std::lock_guard lock{mutex_};
  counters_.bytesCopied -= bytes;
}

void OutcomeLedger::sizeMismatched() {
  const std::lock_guard lock{mutex_};
  ++counters_.convertedSizeMismatches;
}

void OutcomeLedger::failed(std::size_t index, FileOutcome::Failed failure) {
  const PlannedFile& file = plan_.files[index];
  const std::lock_guard lock{mutex_};
  // A file whose name is unsafe is reported under its name on the phone.
  const std::string name = isSafePathComponent(file.asset.name())
                               ? lastPathComponent(file.relativePath)
                               : std::string{file.asset.name()};
  outcomes_[index] =
      FileOutcome{std::string{file.asset.id()}, name, std::nullopt, 0, std::move(failure)};
  ++settled_;
}

void OutcomeLedger::landed(std::size_t index, Landing landing) {
  const PlannedFile& file = plan_.files[index];
  const std::lock_guard lock{mutex_};
  FileOutcome& outcome = outcomes_[index].emplace(
      FileOutcome{std::string{file.asset.id()}, lastPathComponent(landing.path), landing.path,
                  landing.size, std::move(landing.kind), landing.hasSafeName, landing.isMisnamed});
  ++settled_;
  counters_.bytesWritten += landing.bytesWritten;
  unsynced_.push_back({index, landing.bytesWritten});
  if (outcome.is<FileOutcome::AlreadyThere>()) ++counters_.resumedSkips;
  if (outcome.is<FileOutcome::Copied>()) {
    ++counters_.copied;
    if (file.isPicture) ++counters_.copiedPictures;
  }
  if (setup_.landed) setup_.landed({file, outcome, std::move(landing.sha256)});
}

void OutcomeLedger::syncBegins() {
  const std::lock_guard lock{mutex_};
  syncing_ = unsynced_.size();
  if (setup_.syncBegins) setup_.syncBegins();
}

void OutcomeLedger::syncEnded() {
  const std::lock_guard lock{mutex_};
  unsynced_.erase(unsynced_.begin(), unsynced_.begin() + static_cast<std::ptrdiff_t>(syncing_));
  if (setup_.syncEnded) setup_.syncEnded();
}

void OutcomeLedger::takeBackUnsynced() {
  const std::lock_guard lock{mutex_};
  for (const auto& [index, bytesWritten] : unsynced_) {
    const FileOutcome& outcome = *outcomes_[index];
    counters_.bytesWritten -= bytesWritten;
    if (outcome.is<FileOutcome::AlreadyThere>()) --counters_.resumedSkips;
    if (outcome.is<FileOutcome::Copied>()) {
      --counters_.copied;
      if (plan_.files[index].isPicture) --counters_.copiedPictures;
    }
    outcomes_[index].reset();
    --settled_;
  }
  unsynced_.clear();
}

TransferReport OutcomeLedger::report() const {
  const std::lock_guard lock{mutex_};
  TransferReport report = counters_;
  for (const auto& outcome : outcomes_) {
    if (!outcome) continue;
    report.files.push_back(*outcome);
    if (outcome->is<FileOutcome::KeptOriginal>())
      report.conversionFallbacks.push_back(outcome->name);
    if (const auto* const failed = std::get_if<FileOutcome::Failed>(&outcome->kind)) {
      report.failures.push_back(outcome->name + ": " + failed->reason);
    }
  }
  return report;
}

}  // namespace tavrix
