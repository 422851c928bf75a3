#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "defaults/DefaultsFault.h"
#include "foundation/json/JsonValue.h"

namespace tavrix {

/// The objects of user defaults by key: numbers, texts, and data, which is a JSON list or object.
using DefaultsObjects = JsonValue::Object;
/// The new object of each key that changes; nothing for a key that is removed.
using DefaultsChanges = std::map<std::string, std::optional<JsonValue>, std::less<>>;

/// The objects with the changes made.
DefaultsObjects withChanges(DefaultsObjects objects, const DefaultsChanges& changes);

/// A person's choices by key, which outlive the program. Nothing here knows what a key means: a
/// reader checks the type of what it gets. No member throws; what went wrong with the storage is
/// asked for by takeFaults(). Safe to call from several threads.
class UserDefaults {
 public:
  virtual ~UserDefaults() = default;

  /// The object of a key, as this process knows it; nothing when there is none.
  virtual std::optional<JsonValue> object(std::string_view key) const = 0;
  /// All keys, sorted.
  virtual std::vector<std::string> keys() const = 0;
  /// Makes all changes in one step, stored when this returns.
  virtual void apply(const DefaultsChanges& changes) = 0;
  /// What went wrong since this was asked last, each thing once, in its order.
  virtual std::vector<DefaultsFault> takeFaults() = 0;

  /// The object as a type; nothing when it is of another one.
  std::optional<double> number(std::string_view key) const;
  std::optional<std::string> text(std::string_view key) const;

  void set(std::string_view key, JsonValue object);
  void remove(std::string_view key);
};

}  // namespace tavrix
