#pragma once

#include <set>
#include <string>
#include <string_view>

#include "interface/words/Words.h"
#include "model/AppModel.h"

namespace tavrix::window {

/// Reads and changes the model's settings by the keys of settingKeys(). Used on the main loop only.
class SettingsPort {
 public:
  /// The model and the words must outlive the port.
  SettingsPort(AppModel& model, const Words& words, std::string systemLocaleID);

  AppModel& model() const { return model_; }
  Language language() const { return words_.language(); }
  const std::string& systemLocaleID() const { return systemLocaleID_; }
  const Settings& now() const { return *model_.state().settings; }

  /// Returns the value of a switch, a number, a word or a text; the key must be one of those.
  JsonValue value(std::string_view key) const;
  /// Returns the value of a first launch.
  static JsonValue initialValue(std::string_view key);
  /// Sets a key by its text form. A text that the key does not accept changes nothing.
  void set(std::string_view key, std::string_view text);
  template <typename Edit>
  void change(Edit edit) {
    Settings settings = now();
    edit(settings);
    model_.changeSettings(std::move(settings));
  }

  /// Returns false if the setting has no effect together with the others, whatever its value.
  bool isUsed(std::string_view key) const { return !unused_.contains(key); }
  /// Finds again which settings have an effect. Called after each change of the settings.
  void update();

 private:
  AppModel& model_;
  const Words& words_;
  std::string systemLocaleID_;
  std::set<std::string_view> unused_;
};

}  // namespace tavrix::window
