#include "runs/RunRecording.h"

#include <absl/container/flat_hash_map.h>

#include <algorithm>

#include "foundation/Sentences.h"
#include "foundation/StringMap.h"
#include "foundation/Text.h"
#include "foundation/files/AtomicFile.h"
#include "library/ShownRows.h"
#include "naming/GroupPlaces.h"
#include "text/ConversionSentences.h"
#include "text/DifferingText.h"
#include "text/RunSentences.h"
#include "text/SentenceParts.h"

namespace tavrix {
namespace {

using ShotInput = TransferRecord::ShotInput;
using Container = TransferOptions::Container;

std::string templateName(const NameTemplate& nameTemplate, const std::vector<SavedPreset>& saved) {
  for (const NamePresets::Builtin& preset : NamePresets::builtins()) {
    if (preset.nameTemplate == nameTemplate) return std::string{preset.russian};
  }
  for (const SavedPreset& preset : saved) {
    if (preset.nameTemplate == nameTemplate) return preset.name;
  }
  return say(Language::russian, sentences::ownTemplate);
}

/// Adds the city, otherwise the region, otherwise the country.
void addName(TransferRecord::Place& place, const std::string& language, const PlaceNames& names) {
  const auto& name = names.cityOrRegion() ? names.cityOrRegion() : names.countryName;
  if (name) place.names.emplace(language, *name);
  place.countryCode = names.countryCode;
}

/// Returns the name that the user typed. If the home was detected, returns the name of its place,
/// if known.
std::optional<std::string> homeName(const RunRecordInput& run) {
  if (run.settings.gathering.homeOverride) return run.settings.gathering.homeOverrideName;
  const auto& home = run.library.home;
  const auto& places = run.library.places;
  if (!home || !home->point || !places) return std::nullopt;
  const std::string locale = run.language == Language::russian ? "ru" : "en";
  const auto names = places->names(places->placeKey(*home->point), locale);
  if (!names) return std::nullopt;
  const auto& name = names->cityOrRegion();
  return name ? name : names->countryName;
}

/// Returns the place after which a group is named. Without names it is the group's centre.
std::optional<TransferRecord::Place> placeOf(const MediaGroup& group, const PlaceLookup* lookup) {
  if (!group.place) return std::nullopt;
  TransferRecord::Place place;
  place.latitude = group.place->latitude;
  place.longitude = group.place->longitude;
  if (lookup == nullptr) return place;
  std::string key = lookup->placeKey(*group.place);
  const GroupPlaces named = placesOf(group, *lookup, "en");
  if (!named.places.empty()) {
    const GroupPlaces::Place& city = named.places.front();
    place.latitude = city.center.latitude;
    place.longitude = city.center.longitude;
    key = city.key;
  }
  for (const std::string language : {"en", "ru"}) {
    if (const auto names = lookup->names(key, language)) addName(place, language, *names);
  }
  return place;
}

/// The folder of the run that contains a shot.
struct ShotFolder {
  std::string name;
  std::optional<TransferRecord::Place> place;
};

bool namesFolders(const Choosing* choosing) {
  return choosing != nullptr && !choosing->choice().folders.empty();
}

std::vector<ShotInput> shotsOf(const RunRecordInput& run) {
  absl::flat_hash_map<std::string_view, const AssetBundle*> whole;
  whole.reserve(run.library.bundles->size());
  for (const AssetBundle& bundle : *run.library.bundles) whole.emplace(bundle.id(), &bundle);
  const bool isFlat = run.settings.gathering.uiMode == UIGroupingMode::flat;
  const auto folderOf = [&](const FolderNaming::Row& row, const PlaceLookup* lookup) {
    return ShotFolder{isFlat ? std::string{} : row.name, placeOf(*row.group, lookup)};
  };
  const PlaceLookup* const places = run.library.places.get();
  std::vector<ShotInput> shots;
  if (!run.settings.content.skipOptimized || run.library.optimizedCount == 0) {
    for (const FolderNaming::Row& row : run.library.rows) {
      const ShotFolder folder = folderOf(row, places);
      for (const AssetBundle& bundle : row.group->bundles) {
        shots.push_back({*whole.at(bundle.id()), folder.name, folder.place});
      }
    }
    return shots;
  }
  // Groups all shots, including the skipped copies. Each shot is recorded in the folder of the run
  // that contains it or its nearest neighbour.
  StringMap<ShotFolder> folders;
  for (const FolderNaming::Row& row : run.library.rows) {
    folders.emplace(row.group->id, folderOf(row, places));
  }
  const ShownRows shown{run.shownRows};
  Settings settings = run.settings;
  settings.content.skipOptimized = false;
  const NamedGroups named =
      rowsOf(run.library.bundles, settings, run.systemLocaleID, run.placeNaming);
  for (const FolderNaming::Row& row : named.rows) {
    const ShotFolder other = folderOf(row, named.places.get());
    const auto shownRows = shown.of(*row.group);
    for (std::size_t i = 0; i < shownRows.size(); ++i) {
      const AssetBundle& bundle = *whole.at(row.group->bundles[i].id());
      if (!shown.contains(bundle) && !bundle.original().isOptimized()) continue;
      const auto own =
          shownRows[i] ? folders.find(run.shownRows[*shownRows[i]].group->id) : folders.end();
      // Shots of a folder that was left out are not part of the run.
      const bool isLeftOut =
          shownRows[i] ? own == folders.end()
                       : run.unchecked.contains(row.group->id) || namesFolders(run.choosing);
      if (isLeftOut || (run.choosing != nullptr && !run.choosing->partOf(bundle))) continue;
      const ShotFolder& folder = own == folders.end() ? other : own->second;
      shots.push_back({bundle, folder.name, folder.place});
    }
  }
  return shots;
}

/// The files of a report with a mark: the first one, or nullptr, and how many there are.
struct MarkedFiles {
  const FileOutcome* first = nullptr;
  std::uint64_t count = 0;
};

MarkedFiles markedFiles(const TransferReport& report, bool FileOutcome::* mark) {
  MarkedFiles marked;
  for (const FileOutcome& file : report.files) {
    if (file.*mark && marked.count++ == 0) marked.first = &file;
  }
  return marked;
}

std::optional<std::string> safeNamesNote(Language language, const TransferPlan& plan,
                                         const TransferReport& report) {
  const auto [first, count] = markedFiles(report, &FileOutcome::hasSafeName);
  if (first == nullptr) return std::nullopt;
  const auto planned = std::ranges::find_if(
      plan.files, [id = first->assetID](const PlannedFile& file) { return file.asset.id() == id; });
  if (planned == plan.files.end()) return std::nullopt;
  return say(language, sentences::noteSafeNames, counted(language, count, sentences::files),
             forSentence(planned->relativePath), forSentence(first->path.value_or(first->name)));
}

std::optional<std::string> misnamedNote(Language language, const TransferReport& report) {
  const auto [first, count] = markedFiles(report, &FileOutcome::isMisnamed);
  if (first == nullptr) return std::nullopt;
  return say(language, sentences::noteMisnamed, counted(language, count, sentences::files),
             forSentence(first->path.value_or(first->name)));
}

std::vector<std::string> notesOf(const RunRecordInput& run) {
  const Language language = run.language;
  if (run.isUnderWay) {
    const bool isPacked = transferOptions(run.settings, {}).container != Container::folder;
    return {say(language, isPacked ? sentences::notePackingUnderWay : sentences::noteUnderWay)};
  }
  std::vector<std::string> notes = runNotes(language, run.library, run.outcome);
  for (std::string& note : fileNotes(language, run.plan, *run.outcome.report)) {
    notes.push_back(std::move(note));
  }
  for (std::string& text : differingTexts(language, countsOf(run.plan.differing))) {
    notes.push_back(std::move(text));
  }
  return notes;
}

/// Adds the reason to every file that was kept unconverted.
void tellWhyKept(TransferRecord& record, const TransferReport& report, Language language) {
  StringMap<ConversionFailure> reasons;
  for (const FileOutcome& file : report.files) {
    const auto* const kept = std::get_if<FileOutcome::KeptOriginal>(&file.kind);
    if (kept != nullptr) reasons.emplace(file.assetID, kept->reason);
  }
  if (reasons.empty()) return;
  for (TransferRecord::Folder& folder : record.folders) {
    for (TransferRecord::Shot& shot : folder.shots) {
      for (TransferRecord::File& file : shot.files) {
        const auto found = reasons.find(file.assetID);
        if (found == reasons.end()) continue;
        file.reason = sentences::conversionFailureText(language, found->second);
        file.reasonCode = ReasonCode{.code = std::string{textOf(found->second)}};
      }
    }
  }
}

/// Adds the difference to every file that was left in place although its size is not the expected
/// one.
void tellWhatDiffers(TransferRecord& record, const TransferPlan& plan, Language language) {
  StringViewMap<const DifferingFile*> differing;
  for (const DifferingFile& file : plan.differing) differing.emplace(file.assetID, &file);
  if (differing.empty()) return;
  for (TransferRecord::Folder& folder : record.folders) {
    for (TransferRecord::Shot& shot : folder.shots) {
      for (TransferRecord::File& file : shot.files) {
        const auto found = differing.find(file.assetID);
        if (found == differing.end() || file.path != found->second->path) continue;
        const DifferingFile& there = *found->second;
        file.reason = differenceText(language, there.kind);
        file.reasonCode = ReasonCode{.code = std::string{textOf(there.kind)},
                                     .expectedBytes = there.expectedSize,
                                     .receivedBytes = there.size};
      }
    }
  }
}

}  // namespace

std::vector<std::string> runNotes(Language language, const Library& library,
                                  const RunOutcome& outcome) {
  std::vector<std::string> notes;
  if (outcome.status == TransferRecord::Status::cancelled) {
    notes.push_back(say(language, sentences::noteCancelled));
  }
  if (outcome.interruption) {
    notes.push_back(say(language, sentences::noteInterrupted,
                        sentences::systemErrorText(language, outcome.interruption->code())));
  } else if (outcome.stopReason) {
    notes.push_back(say(language, sentences::noteInterrupted, *outcome.stopReason));
  }
  if (outcome.phoneWaits > 0) {
    notes.push_back(say(language, sentences::notePhoneWaits,
                        counted(language, outcome.phoneWaits, sentences::times)));
  }
  for (const std::string& note : packingNotes(language, outcome)) notes.push_back(note);
  if (auto note = unknownKindNote(language, library)) notes.push_back(*std::move(note));
  if (outcome.unreadFolders > 0) {
    notes.push_back(say(language, sentences::noteUnreadFolders,
                        counted(language, outcome.unreadFolders, sentences::folders)));
  }
  if (!outcome.report->conversionFallbacks.empty()) {
    notes.push_back(say(language, sentences::noteKeptOriginals));
  }
  if (outcome.markerFailure) {
    notes.push_back(say(language, sentences::noteMarkerNotSaved,
                        sentences::systemErrorText(language, outcome.markerFailure->code())));
  }
  return notes;
}

std::vector<std::string> packingNotes(Language language, const RunOutcome& outcome) {
  std::vector<std::string> notes;
  for (const RunOutcome::UnpackedFolder& folder : outcome.unpackedFolders) {
    notes.push_back(folder.group
                        ? say(language, sentences::noteGroupUnpacked, *folder.group, folder.reason)
                        : say(language, sentences::noteWholeUnpacked, folder.reason));
  }
  const StagingLeftOvers& leftOvers = outcome.leftOvers;
  if (!leftOvers.rescued.empty()) {
    notes.push_back(say(language, sentences::noteRescued,
                        counted(language, leftOvers.rescued.size(), sentences::files)));
  }
  if (leftOvers.removed > 0) {
    notes.push_back(say(language, sentences::noteStagingCleared,
                        counted(language, leftOvers.removed, sentences::files)));
  }
  if (leftOvers.removedParts > 0) {
    notes.push_back(say(language, sentences::notePartsCleared,
                        counted(language, leftOvers.removedParts, sentences::files)));
  }
  return notes;
}

std::vector<std::string> fileNotes(Language language, const TransferPlan& plan,
                                   const TransferReport& report) {
  std::vector<std::string> notes;
  if (auto note = safeNamesNote(language, plan, report)) notes.push_back(*std::move(note));
  if (auto note = misnamedNote(language, report)) notes.push_back(*std::move(note));
  return notes;
}

std::optional<std::string> unknownKindNote(Language language, const Library& library) {
  const std::vector<std::string>& names = library.leftOut.unknown;
  if (names.empty()) return std::nullopt;
  constexpr std::size_t shown = 5;
  std::string list;
  for (std::size_t i = 0; i < std::min(shown, names.size()); ++i) {
    list.append(i == 0 ? "" : ", ").append(printable(names[i]));
  }
  if (names.size() > shown) list += ", …";
  return say(language, sentences::noteUnknownKind,
             counted(language, names.size(), sentences::files), list);
}

TransferRecord::Options recordOptions(const RunRecordInput& run) {
  const Settings& settings = run.settings;
  const TransferOptions transfer = transferOptions(settings, run.phone.label);
  TransferRecord::Options options;
  options.includePhotos = settings.content.includePhotos;
  options.includeLive = settings.content.includeLive;
  options.liveOnlyPhoto = settings.content.liveOnlyPhoto;
  options.includeVideos = settings.content.includeVideos;
  options.includeAAE = settings.content.includeAAE;
  options.editedPolicy = textOf(settings.content.editedPolicy);
  options.onlyNew = settings.layout.onlyNew;
  options.skipOptimized = settings.content.skipOptimized;
  options.mode = textOf(settings.gathering.uiMode);
  options.granularity = textOf(settings.gathering.granularity);
  options.eventGapHours = settings.gathering.eventGapHours;
  options.eventGapKm = settings.gathering.eventGapKm;
  if (settings.gathering.uiMode == UIGroupingMode::trips) {
    options.homeName = homeName(run);
    options.tripDistanceKm = settings.gathering.tripDistanceKm;
    options.tripCityKm = settings.gathering.tripCityKm;
  }
  options.templateName = templateName(settings.naming.nameTemplate, run.savedPresets);
  options.photoFormat = textOf(transfer.photoFormat);
  options.jpegQuality = settings.layout.jpegQuality;
  options.videoFormat = textOf(transfer.videoFormat);
  options.container = textOf(transfer.container);
  options.separatePhotoVideo = settings.layout.separatePhotoVideo;
  options.flattenSingleKind = settings.layout.flattenSingleKind;
  options.fileNamePrefix = transfer.fileNamePrefix;
  return options;
}

TransferRecord recordOf(const RunRecordInput& run) {
  TransferRecord record = makeRecord({.shots = shotsOf(run),
                                      .plan = run.plan,
                                      .report = *run.outcome.report,
                                      .status = run.outcome.status,
                                      .id = run.id,
                                      .startedAt = run.startedAt,
                                      .finishedAt = run.finishedAt,
                                      .phoneName = run.phone.label,
                                      .phoneHash = run.phone.hash,
                                      .destinationPath = run.destinationPath,
                                      .options = recordOptions(run),
                                      .notes = notesOf(run)});
  tellWhyKept(record, *run.outcome.report, run.language);
  tellWhatDiffers(record, run.plan, run.language);
  return record;
}

}  // namespace tavrix
