#include "transfer/RunningTransfer.h"

#include <algorithm>
#include <iterator>

#include "transfer/FileNames.h"
#include "transfer/MarkerClaims.h"

namespace tavrix::RunningTransfer {
namespace {

using CopyVerification::CheckedFile;
using CopyVerification::State;
using DestinationMarker::Claim;
using DestinationMarker::Claims;
using DestinationMarker::Marker;
using DestinationMarker::PhoneRecord;

const PhoneRecord* lastSaved(const Marker& marker) {
  const auto last = std::max_element(
      marker.records.begin(), marker.records.end(),
      [](const PhoneRecord& a, const PhoneRecord& b) { return a.lastTransfer < b.lastTransfer; });
  return last == marker.records.end() ? nullptr : &*last;
}

const Claim* find(const Claims& claims, std::string_view path) {
  const auto found = claims.find(path);
  return found == claims.end() ? nullptr : &found->second;
}

class Reconciliation {
 public:
  Reconciliation(const Marker& before, const Marker& now)
      : before_(DestinationMarker::claims(before)),
        now_(DestinationMarker::claims(now)),
        running_(lastSaved(now)) {}

  bool isBeingWritten(const CheckedFile& file) const {
    if (file.state == State::intact || file.state == State::notReached) return false;
    const Claim* const then = find(before_, file.path);
    const Claim* const since = find(now_, file.path);
    // The transfer drops the entries of files that are gone; such a file stays missing.
    if (since == nullptr) return false;
    return isClaimed(since) || then == nullptr || *since->file != *then->file;
  }

  bool isOfTransfer(const std::string& path) const {
    return now_.contains(path) || isClaimed(find(now_, unnumberedName(path)));
  }

 private:
  bool isClaimed(const Claim* claim) const {
    return claim != nullptr && claim->record == running_ && claim->file->isClaim();
  }

  Claims before_;
  Claims now_;
  const PhoneRecord* running_;
};

}  // namespace

void leaveOut(CopyVerification::Report& report, const Marker& before, const Marker& now) {
  const Reconciliation reconciliation{before, now};
  report.isTransferRunning = true;
  for (CheckedFile& file : report.files) {
    if (reconciliation.isBeingWritten(file)) file.state = State::beingWritten;
  }
  std::vector<std::string>& left = report.ofRunningTransfer;
  left = std::exchange(report.leftOvers, {});
  std::erase_if(report.unknown, [&](const CopyVerification::UnknownFile& file) {
    if (!reconciliation.isOfTransfer(file.path)) return false;
    left.push_back(file.path);
    return true;
  });
  std::sort(left.begin(), left.end());
}

}  // namespace tavrix::RunningTransfer
