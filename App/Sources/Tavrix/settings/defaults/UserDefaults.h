#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/json/JsonValue.h"
#include "settings/defaults/DefaultsFault.h"

namespace tavrix {

/// The objects of user defaults by key: numbers, texts, and data (a JSON list or object).
using DefaultsObjects = JsonValue::Object;
/// The new object of each changed key; nullopt if the key is removed.
using DefaultsChanges = std::map<std::string, std::optional<JsonValue>, std::less<>>;

/// Returns the objects with the changes applied.
DefaultsObjects withChanges(DefaultsObjects objects, const DefaultsChanges& changes);

/// The user's persistent choices by key. This class does not know what a key means; the reader
/// checks the type. No member throws; takeFaults() reports faults of the storage. Thread-safe.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  /// Returns the object of a key, as this process knows it. Returns nullopt if there is none.
  virtual std::optional<JsonValue> object(std::string_view key) const = 0;
  /// Returns all keys, sorted.
  virtual std::vector<std::string> keys() const = 0;
  /// Applies all changes in one step. They are stored when this returns.
  virtual void apply(const DefaultsChanges& changes) = 0;
  /// Returns the faults since the last call, each once, in order of occurrence.
  virtual std::vector<DefaultsFault> takeFaults() = 0;
  /// Returns the path of the file that stores the objects, for the user; "" if there is none.
  virtual std::string path() const { return {}; }

  /// Return the object as this type. Return nullopt if it has another type.
  std::optional<double> number(std::string_view key) const;
  std::optional<std::string> text(std::string_view key) const;

  void set(std::string_view key, JsonValue object);
  void remove(std::string_view key);
};

}  // namespace tavrix
