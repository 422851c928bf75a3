#include "settings/defaults/UserDefaults.h"

namespace tavrix {

DefaultsObjects withChanges(DefaultsObjects objects, const DefaultsChanges& changes) {
  for (const auto& [key, object] : changes) {
    if (object) {
      objects.insert_or_assign(key, *object);
    } else {
      objects.erase(key);
    }
  }
  return objects;
}

std::optional<double> UserDefaults::number(std::string_view key) const {
  const auto found = object(key);
  return found ? found->asNumber() : std::nullopt;
}

std::optional<std::string> UserDefaults::text(std::string_view key) const {
  const auto found = object(key);
  if (!found || found->asString() == nullptr) return std::nullopt;
  return *found->asString();
}

void UserDefaults::set(std::string_view key, JsonValue object) {
  apply({{std::string{key}, std::move(object)}});
}

void UserDefaults::remove(std::string_view key) { apply({{std::string{key}, std::nullopt}}); }

}  // namespace tavrix
