#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "foundation/files/FileError.h"
#include "foundation/files/Folder.h"
#include "settings/defaults/UserDefaults.h"

namespace tavrix {

/// User defaults in the file "defaults.json" of a folder, in the format of docs/defaults.md.
///
/// The file is read at construction. For each change it is locked, read again, and replaced in one
/// step with only this process's changes added. So changes of other processes are never lost, their
/// values become known here, and a reader always sees one complete version. A change blocks until
/// the data is on disk, and for some seconds while another process holds the lock.
///
/// The first change renames a damaged file by appending ".damaged" (".damaged-2", … if that name is
/// taken) and starts a new one. A change that cannot be stored still applies to this process. It is
/// tried again with the next change, unless it was too large.
///
/// If "defaults.json" is a symbolic link, all this applies to the file at its end: the link stays,
/// and a missing file is created there if its folder exists.
class FileDefaults : public UserDefaults {
 public:
  /// Opens the folder that contains the file. If it is missing, creates it when `createsIt` is true
  /// and returns nullptr otherwise. Throws FileError.
  using FolderOpener =
      std::function<std::unique_ptr<Folder>(const std::string& directory, bool createsIt)>;

  /// Creates nothing on disk before the first change.
  explicit FileDefaults(const std::string& directory);
  FileDefaults(const std::string& directory, FolderOpener open);

  std::optional<JsonValue> object(std::string_view key) const override;
  std::vector<std::string> keys() const override;
  void apply(const DefaultsChanges& changes) override;
  std::vector<DefaultsFault> takeFaults() override;
  std::string path() const override { return path_; }

 private:
  void load();
  bool changesNothing(const DefaultsChanges& changes) const;
  void store();
  void storeIn(Folder& folder, const std::string& name);
  DefaultsObjects storedIn(Folder& folder, const std::string& name);
  void setAside(Folder& folder, const std::string& name);
  DefaultsFault notFile(const FileError& error) const;
  void report(DefaultsFault fault);

  std::string path_;
  FolderOpener open_;
  mutable std::mutex mutex_;
  DefaultsObjects objects_;     ///< the last version read, with the changes of this process
  DefaultsChanges unstored_;    ///< changes of this process that are not in the file yet
  DefaultsChanges unstorable_;  ///< changes that are too large for the file
  std::vector<DefaultsFault> faults_;
};

/// Returns the folder of the defaults: "Tavrix" in XDG_CONFIG_HOME, otherwise in ".config" of HOME.
/// According to the XDG base directory rules a path that is not absolute is ignored. Returns
/// nullopt if neither is set.
std::optional<std::string> defaultsFolderPath(const std::optional<std::string>& configHome,
                                              const std::optional<std::string>& home);

}  // namespace tavrix
