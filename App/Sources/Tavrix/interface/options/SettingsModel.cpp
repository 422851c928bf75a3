#include "interface/options/SettingsModel.h"

#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "settings/PersistedSettings.h"

namespace tavrix::window {

SettingsModel::SettingsModel(WindowSession& session, const Words& words)
    : port_(session.model(), words, session.surroundings().systemLocaleID),
      systemZone_(session.surroundings().systemTimeZoneID),
      phoneName_(
          variable(session.surroundings().environment, "DEMO_DEVICE_NAME").value_or("iPhone")),
      model_(session.model()),
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  connect(&words, &Words::languageChanged, this, &SettingsModel::announce);
}

SettingsModel* SettingsModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new SettingsModel{EngineObjects::of<WindowSession>(*engine),
                           EngineObjects::of<Words>(*engine)};
}

void SettingsModel::follow(const StateChange& change) {
  if (change.has(StateTopic::settings)) port_.update();
  if (change.has(StateTopic::settings) || change.has(StateTopic::rows) ||
      change.has(StateTopic::device)) {
    announce();
  }
  if (change.has(StateTopic::counters)) Q_EMIT countersChanged();
  if (change.has(StateTopic::questions)) Q_EMIT overlayChanged();
}

void SettingsModel::announce() {
  Q_EMIT changed();
  Q_EMIT countersChanged();
  const auto tell = [](auto&... settings) { (..., settings.changed()); };
  tell(includePhotos_, includeLive_, liveOnlyPhoto_, includeVideos_, includeAAE_, editedPolicy_,
       skipOptimized_, onlyNew_, periodFrom_, periodTo_, timeZone_, cameraDays_, datesFromNames_);
  tell(eventGapHours_, splitByDistance_, eventGapKm_, tripDistanceKm_, tripCityKm_, tripMinDays_,
       tripMaxGapHours_, placeRadiusKm_, home_, homePeriods_, homeMonths_);
  tell(nameTemplate_, prefix_, geocodingEnabled_, mergeDistricts_, mergeSameNames_, severalCities_,
       wholeFolderDates_, continueFolders_);
  tell(photoJPEG_, jpegQuality_, videoH264_, separatePhotoVideo_, flattenSingleKind_, packAsZip_,
       packing_);
}

QString SettingsModel::optimizedTitle() const {
  return QString::fromStdString(say(port_.language(), sentences::optimizedTitle,
                                    numberText(port_.language(), model_.state().optimizedCount)));
}

bool SettingsModel::hasOptimized() const {
  return model_.state().optimizedCount > 0 || port_.now().content.skipOptimized;
}

bool SettingsModel::isPeriodEmpty() const {
  const Settings::Content& content = port_.now().content;
  return content.periodFrom && content.periodTo && *content.periodFrom > *content.periodTo;
}

QString SettingsModel::nameExample() const {
  return QString::fromStdString(say(port_.language(), sentences::nameExample, exampleName(port_)));
}

void SettingsModel::showOptimizedInfo(bool isOpen) {
  if (isOpen) {
    model_.openOptimizedInfo();
  } else if (isOptimizedInfoOpen()) {
    model_.closeOverlay();
  }
}

void SettingsModel::forgetHome() {
  port_.change([](Settings& settings) {
    settings = PersistedSettings::withManualHome(std::move(settings), std::nullopt);
  });
}

}  // namespace tavrix::window
