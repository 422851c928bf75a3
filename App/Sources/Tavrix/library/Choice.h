#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "foundation/StringMap.h"
#include "library/Library.h"
#include "media/FileGlob.h"
#include "transfer/TransferPlanner.h"

namespace tavrix {

/// The part of a library that a call wants. Unlike the settings, it is applied after grouping, so
/// that every folder and file keeps the id, name and path that it has without the choice.
struct Choice {
  std::vector<std::string> folders;  ///< ids, or names in any letter case; empty: all
  std::optional<CivilDate> from;     ///< first day of the shots; none without a date are chosen
  std::vector<FileGlob> excluded;    ///< files that are left out
  bool isSinceLast = false;          ///< only shots with a file that no finished run has recorded

  bool isEverything() const { return folders.empty() && !from && excluded.empty() && !isSinceLast; }
  friend bool operator==(const Choice&, const Choice&) = default;
};

/// A choice names a folder that does not exist.
class UnknownFolder : public std::exception {
 public:
  UnknownFolder(std::string wanted, std::vector<std::string> known)
      : wanted_(std::move(wanted)), known_(std::move(known)) {}
  const std::string& wanted() const { return wanted_; }
  /// Returns the ids and names of the folders.
  const std::vector<std::string>& known() const { return known_; }
  const char* what() const noexcept override { return "UnknownFolder"; }

 private:
  std::string wanted_;
  std::vector<std::string> known_;
};

/// Applies a choice to the folders of a library and to the plan for them.
class Choosing {
 public:
  using Folders = std::vector<TransferPlanner::NamedGroup>;

  /// Days are those of `clock`. `recorded` has the ids of the files that finished runs have
  /// recorded.
  Choosing(Choice choice, ShotClock clock, StringSet recorded = {});

  const Choice& choice() const { return choice_; }
  /// Throws UnknownFolder if the choice names a folder that is not among these.
  void check(const Folders& folders) const;
  /// Returns true if check() would not throw.
  bool knowsAll(const Folders& folders) const;
  /// Returns the chosen files of a shot as a shot, and nullopt if none are. Without its primary
  /// picture no file of a shot is chosen.
  std::optional<AssetBundle> partOf(const AssetBundle& shot) const;
  /// Returns the chosen folders with their chosen shots and files, without folders that have none.
  /// The dates and the place of a folder stay those of all its shots.
  Folders partOf(const Folders& folders) const;

 private:
  bool isNamed(const TransferPlanner::NamedGroup& folder) const;
  std::optional<MediaGroup> partOf(const MediaGroup& group) const;

  Choice choice_;
  ShotClock clock_;
  StringSet recorded_;
  StringSet names_;  ///< the chosen names, case-folded
};

/// Returns the part of a plan for the given folders, which are a part of those it was made from.
TransferPlan partOf(const TransferPlan& all, const Choosing::Folders& chosen);
/// Returns the library with only these rows, which are a part of its own. Counts the files of the
/// others as left out by the choice, and drops the reasons of the others.
Library partOf(Library library, std::vector<FolderNaming::Row> chosen);
/// Returns the rows without the names that folders of a destination have.
Choosing::Folders foldersOf(const std::vector<FolderNaming::Row>& rows);

}  // namespace tavrix
