#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "defaults/UserDefaults.h"
#include "foundation/files/Folder.h"

namespace tavrix {

/// User defaults in the file "defaults.json" of a folder, in the form of docs/defaults.md.
///
/// The file is read once, at construction, and again under a lock with every change, which puts
/// this process's changes alone into what the file holds by then: changes of other processes are
/// never lost, and their values are known here from then on. It is replaced in one step, so that
/// whoever reads it meets one whole version. A change waits for the disk, and for some seconds
/// where another process holds the file.
///
/// A damaged file stays as it is until the first change and is then kept beside the new one with
/// ".damaged" appended (".damaged-2", … where that is taken). What cannot be stored counts for this
/// process, and is tried again with the next change unless it was too large.
class FileDefaults : public UserDefaults {
 public:
  /// Opens the folder of the file, creating it where it is missing if that is asked; null where it
  /// is missing otherwise. Throws FileError.
  using FolderOpener = std::function<std::unique_ptr<Folder>(bool createsIt)>;

  /// Nothing is created before the first change.
  explicit FileDefaults(const std::string& directory);
  FileDefaults(const std::string& directory, FolderOpener open);

  std::optional<JsonValue> object(std::string_view key) const override;
  std::vector<std::string> keys() const override;
  void apply(const DefaultsChanges& changes) override;
  std::vector<DefaultsFault> takeFaults() override;

 private:
  void load();
  bool changesNothing(const DefaultsChanges& changes) const;
  void store();
  void storeIn(Folder& folder);
  DefaultsObjects storedIn(Folder& folder);
  void setAside(Folder& folder);
  void report(DefaultsFault fault);

  std::string path_;
  FolderOpener open_;
  mutable std::mutex mutex_;
  DefaultsObjects objects_;     ///< what was read last, with the changes of this process
  DefaultsChanges unstored_;    ///< changes of this process that the file does not hold yet
  DefaultsChanges unstorable_;  ///< those that no file can hold
  std::vector<DefaultsFault> faults_;
};

/// The folder of the defaults: "Tavrix" below XDG_CONFIG_HOME, else below ".config" of HOME (as XDG
/// base directories go, a path that is not absolute is passed over). Nothing when neither is there.
std::optional<std::string> defaultsFolderPath(const std::optional<std::string>& configHome,
                                              const std::optional<std::string>& home);

}  // namespace tavrix
