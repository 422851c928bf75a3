// TextPrinter: checks of a destination, and recognised copies.

#include "cli/printing/KeptReasonText.h"
#include "cli/printing/ShellWord.h"
#include "cli/printing/TextPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

/// The most lines shown of a long list that is not a warning.
constexpr std::size_t shownLines = 20;

std::vector<std::string> linesOf(Language language, const std::vector<UnreadableFolder>& folders) {
  std::vector<std::string> lines;
  lines.reserve(folders.size());
  for (const UnreadableFolder& folder : folders) {
    lines.push_back(say(language, sentences::fileAndReason, folder.path,
                        unreadableReason(language, folder.code)));
  }
  return lines;
}

/// Returns the counts of unreadable entries and folders, without files: "1 запись, 2 папки".
std::string unreadThings(Language language, const CopyVerification::Report& report) {
  std::string text;
  const auto add = [&](std::size_t count, const CountedNoun& noun) {
    if (count == 0) return;
    if (!text.empty()) text += ", ";
    text += counted(language, count, noun);
  };
  add(report.damagedRecords.size(), sentences::records);
  add(report.unreadableFolders.size(), tavrix::sentences::folders);
  return text;
}

}  // namespace

void TextPrinter::shortList(const std::string& title, const std::vector<std::string>& lines) {
  if (lines.size() <= shownLines) return list(title, lines);
  list(title, {lines.begin(), lines.begin() + shownLines});
  line("  " +
       say(language_, sentences::moreInJson, count(lines.size() - shownLines, sentences::files)));
}

std::string TextPrinter::reasonOf(const CopyVerification::CheckedFile& file) const {
  if (file.found != FileStatus::Type::file) return inPlaceText(language_, file.found);
  if (file.errorCode != 0) return unreadableReason(language_, file.errorCode);
  if (file.listedSha256 && file.sha256) return say(language_, sentences::listDiffers);
  const std::uint64_t size = file.size.value_or(0);
  return size == file.expectedSize
             ? say(language_, sentences::contentDiffers)
             : say(language_, tavrix::sentences::sizesDiffer, file.expectedSize, size);
}

void TextPrinter::findings(const CopyVerification::Report& report) {
  using CopyVerification::State;
  const auto pathsOf = [&](State state, bool withReason) {
    std::vector<std::string> lines;
    for (const auto& file : report.files) {
      if (file.state != state) continue;
      lines.push_back(withReason
                          ? say(language_, sentences::fileAndReason, file.path, reasonOf(file))
                          : file.path);
    }
    return lines;
  };
  list(say(language_, sentences::changedTitle), pathsOf(State::changed, true));
  list(say(language_, sentences::missingTitle), pathsOf(State::missing, false));
  list(say(language_, sentences::unreadableTitle), pathsOf(State::unreadable, true));
  list(say(language_, sentences::unreadableFoldersTitle),
       linesOf(language_, report.unreadableFolders));
  list(say(language_, sentences::damagedRecordsTitle), report.damagedRecords);
  shortList(say(language_, sentences::neverConfirmedTitle), pathsOf(State::neverConfirmed, false));
  shortList(say(language_, sentences::withoutChecksumTitle),
            pathsOf(State::withoutChecksum, false));
  std::vector<std::string> unknown;
  unknown.reserve(report.unknown.size());
  for (const auto& file : report.unknown) unknown.push_back(file.path);
  shortList(say(language_, sentences::unknownTitle), unknown);
  shortList(say(language_, sentences::leftOversTitle), report.leftOvers);
}

void TextPrinter::verification(const VerificationResult& result) {
  using CopyVerification::State;
  const CopyVerification::Report& report = result.report;
  const std::uint64_t losses = report.lostFiles();
  const std::string read = bytes(report.bytesRead);
  if (losses > 0 && !report.isStopped) {
    line(say(language_, sentences::checkLosses, count(losses, sentences::filesAre), read));
  } else if (report.hasLosses() && !report.isStopped) {
    line(say(language_, sentences::checkIncomplete, unreadThings(language_, report), read));
  } else if (report.files.empty()) {
    line(say(language_, sentences::checkEmpty));
  } else if (!report.isStopped) {
    const bool isAll = report.count(State::intact) == report.files.size();
    const Sentence<std::string_view>& incomplete = report.count(State::beingWritten) > 0
                                                       ? sentences::checkWhileRunning
                                                       : sentences::checkNoLosses;
    line(say(language_, isAll ? sentences::checkAllIntact : incomplete, read));
  }
  if (!report.isStopped) line("");
  const auto row = [&](int depth, const Sentence<>& label, std::uint64_t number,
                       bool isShownWhenZero = false) {
    return TallyRow{depth, say(language_, label), number, isShownWhenZero};
  };
  tallyRows({row(0, sentences::rowRecorded, report.files.size(), true),
             row(1, sentences::rowIntact, report.count(State::intact), true),
             row(1, sentences::rowChanged, report.count(State::changed)),
             row(1, sentences::rowMissing, report.count(State::missing)),
             row(1, sentences::rowUnreadable, report.count(State::unreadable)),
             row(1, sentences::rowNeverConfirmed, report.count(State::neverConfirmed)),
             row(1, sentences::rowWithoutChecksum, report.count(State::withoutChecksum)),
             row(1, sentences::rowNotReached, report.count(State::notReached)),
             row(1, sentences::rowBeingWritten, report.count(State::beingWritten)),
             row(0, sentences::rowUnreadableFolders, report.unreadableFolders.size()),
             row(0, sentences::rowDamagedRecords, report.damagedRecords.size()),
             row(0, sentences::rowUnknown, report.unknown.size()),
             row(0, sentences::rowLeftOvers, report.leftOvers.size()),
             row(0, sentences::rowOfRunningTransfer, report.ofRunningTransfer.size())});
  findings(report);
  if (report.count(State::changed) + report.count(State::missing) > 0) {
    line("");
    line(say(language_, sentences::repairHint,
             "tavrix repair SOURCE " + printable(shellPath(result.destination))));
  }
  if (!result.checksums) return;
  line("");
  line(say(language_, sentences::checksumsWritten, printable(result.checksums->path),
           count(result.checksums->files, sentences::files)));
  if (result.checksums->withoutRecord == 0) return;
  line(say(language_, sentences::checksumsNew,
           count(result.checksums->withoutRecord, sentences::outOfFiles)));
}

void TextPrinter::rebuilt(const RebuildResult& result) {
  using MarkerRebuild::State;
  const MarkerRebuild::Report& report = result.report;
  const auto row = [&](int depth, const Sentence<>& label, std::uint64_t number,
                       bool isShownWhenZero = false) {
    return TallyRow{depth, say(language_, label), number, isShownWhenZero};
  };
  const std::uint64_t recognised = report.count(State::recognised);
  const std::uint64_t known = report.count(State::alreadyRecorded) + recognised;
  const std::string phone = printable(result.phone);
  if (recognised > 0) {
    line(say(language_, sentences::rebuildSaved, phone, count(recognised, sentences::files)));
  } else {
    line(say(language_, result.hasRecord ? sentences::rebuildNothingNew : sentences::rebuildNothing,
             phone));
  }
  line("");
  tallyRows({row(0, sentences::rowInFolder, report.files.size(), true),
             row(1, sentences::rowRecognised, known, true),
             row(2, sentences::rowAlreadyRecorded, report.count(State::alreadyRecorded)),
             row(2, sentences::rowRecognisedNow, recognised),
             row(1, sentences::rowNotRecognised, report.files.size() - known, true),
             row(2, sentences::rowOtherPhone, report.count(State::otherPhone)),
             row(2, sentences::rowUnmatched, report.count(State::unmatched)),
             row(2, sentences::rowUnreadable, report.count(State::unreadable)),
             row(2, sentences::rowNotReached, report.count(State::notReached)),
             row(0, sentences::rowUnreadableFolders, report.unreadableFolders.size())});
  std::vector<std::string> unreadable;
  std::vector<std::string> unmatched;
  for (const auto& file : report.files) {
    if (file.state == State::unmatched) unmatched.push_back(file.path);
    if (file.state != State::unreadable) continue;
    unreadable.push_back(say(language_, sentences::fileAndReason, file.path,
                             unreadableReason(language_, file.errorCode)));
  }
  std::vector<std::string> assets;
  for (const MediaAsset& asset : report.unreadableAssets) assets.emplace_back(asset.id());
  list(say(language_, sentences::unreadableTitle), unreadable);
  list(say(language_, sentences::unreadableFoldersTitle),
       linesOf(language_, report.unreadableFolders));
  list(say(language_, sentences::unreadableOnPhoneTitle), assets);
  shortList(say(language_, sentences::unmatchedTitle), unmatched);
}

}  // namespace tavrix::cli
