#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/Time.h"
#include "foundation/Uuid.h"
#include "media/AssetBundle.h"
#include "transfer/ReasonCode.h"

namespace tavrix {

/// The record of one run: its times, phone, destination folder and settings, and the outcome of
/// every shot and every file. docs/history.md describes the file format.
struct TransferRecord {
  static constexpr std::int64_t currentSchemaVersion = 2;

  enum class Status { completed, completedWithFailures, cancelled, interrupted };
  enum class ShotKind { photo, livePhoto, video };
  enum class Role { original, edit, liveVideo, sidecar };
  /// The outcome of a file. `off`: left out by the user's settings, which is not a failure.
  enum class PartState { onMac, alreadyThere, failed, off, notReached };
  /// The outcome of a shot. `optimized`: left out, because the phone has only a reduced copy.
  enum class Outcome { onMac, alreadyThere, failed, optimized, notReached };
  enum class OutcomeFilter { all, onMac, alreadyThere, failed, optimized };

  /// The settings of the run; strings are the settings' own enumerator names.
  struct Options {
    bool includePhotos = true;
    bool includeLive = true;
    bool liveOnlyPhoto = false;
    bool includeVideos = true;
    bool includeAAE = true;
    std::string editedPolicy;
    bool onlyNew = true;
    bool skipOptimized = false;
    std::string mode;
    std::string granularity;
    std::optional<std::string> homeName;
    double eventGapHours = 0;
    double eventGapKm = 0;
    std::optional<double> tripDistanceKm;
    std::optional<double> tripCityKm;
    std::string templateName;
    std::string photoFormat;
    double jpegQuality = 0;
    std::string videoFormat;
    std::string container;
    bool separatePhotoVideo = false;
    bool flattenSingleKind = false;
    std::optional<std::string> fileNamePrefix;

    friend bool operator==(const Options&, const Options&) = default;
  };

  /// Numbers of shots. Each shot is counted once: shots = onMac + alreadyThere + failed + optimized
  /// + the shots that the run did not reach.
  struct Totals {
    std::uint64_t shots = 0;
    std::uint64_t onMac = 0;
    std::uint64_t alreadyThere = 0;
    std::uint64_t failed = 0;
    std::uint64_t optimized = 0;
    std::uint64_t bytesWritten = 0;  ///< of the files written in this run

    std::uint64_t notReached() const { return shots - onMac - alreadyThere - failed - optimized; }
    friend bool operator==(const Totals&, const Totals&) = default;
  };

  struct Place {
    std::map<std::string, std::string, std::less<>> names;  ///< by language, such as "ru"
    std::optional<std::string> countryCode;
    double latitude = 0;   ///< degrees
    double longitude = 0;  ///< degrees

    friend bool operator==(const Place&, const Place&) = default;
  };

  struct File {
    std::string assetID;
    Role role = Role::original;
    std::string name;                      ///< on the phone
    std::optional<std::string> savedName;  ///< on the Mac
    std::optional<std::string> path;       ///< relative to the destination
    std::uint64_t bytes = 0;  ///< size on the Mac if it was written or checked in this run, else on
                              ///< the phone
    PartState state = PartState::notReached;
    std::optional<std::string> reason;       ///< why it failed, or why it was not converted
    bool keptOriginal = false;               ///< the conversion failed and the original was kept
    std::optional<ReasonCode> reasonCode{};  ///< `reason` for programs; absent in older records

    friend bool operator==(const File&, const File&) = default;
  };

  struct Shot {
    std::string id;    ///< of its primary picture
    std::string name;  ///< of its primary picture
    ShotKind kind = ShotKind::photo;
    std::optional<Instant> captureDate;
    std::optional<double> latitude;   ///< degrees
    std::optional<double> longitude;  ///< degrees
    std::vector<File> files;
    Outcome outcome = Outcome::notReached;

    friend bool operator==(const Shot&, const Shot&) = default;
  };

  struct Folder {
    std::string name;  ///< empty if the files are directly in the destination
    std::optional<Place> place;
    std::vector<Shot> shots;

    friend bool operator==(const Folder&, const Folder&) = default;
  };

  /// The reason why a record could not be read.
  class RecordError;

  /// One shot of a run that is to be recorded.
  struct ShotInput {
    AssetBundle bundle;  ///< all files of the shot, including those that the settings left out
    std::string folder;
    std::optional<Place> place;
  };

  std::int64_t schemaVersion = currentSchemaVersion;
  Uuid id;
  Instant startedAt;
  Instant finishedAt;
  Status status = Status::completed;
  std::string phoneName;
  std::optional<std::string> phoneHash;
  std::string destinationPath;
  Options options;
  Totals totals;
  std::vector<Folder> folders;
  std::vector<std::string> notes;

  friend bool operator==(const TransferRecord&, const TransferRecord&) = default;
};

/// Returns the counts of the shots in the folders.
TransferRecord::Totals totalsOf(const std::vector<TransferRecord::Folder>& folders);

/// Returns true if the filter includes shots with this outcome. Only `all` includes shots that were
/// not reached.
bool matches(TransferRecord::OutcomeFilter filter, TransferRecord::Outcome outcome);
/// Returns the record with only the shots that the filter includes; folders without shots are
/// removed. The totals remain those of the run.
TransferRecord filtered(TransferRecord record, TransferRecord::OutcomeFilter filter);

/// Return the names of the enumerators.
std::string_view textOf(TransferRecord::Status status);
std::string_view textOf(TransferRecord::ShotKind kind);
std::string_view textOf(TransferRecord::Role role);
std::string_view textOf(TransferRecord::PartState state);
std::string_view textOf(TransferRecord::Outcome outcome);
std::string_view textOf(TransferRecord::OutcomeFilter filter);
/// Returns the enumerator of a name; nullopt for any other text. Defined for each enumeration of
/// the record.
template <typename Enumeration>
std::optional<Enumeration> caseOf(std::string_view text);

}  // namespace tavrix
