#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>

#include "interface/options/ChoiceSetting.h"
#include "interface/options/DaySetting.h"
#include "interface/options/HomeChoices.h"
#include "interface/options/NumberSetting.h"
#include "interface/options/PrefixSetting.h"
#include "interface/options/SwitchSetting.h"
#include "interface/options/TemplateChoices.h"
#include "interface/options/TimeZoneSetting.h"

class QJSEngine;
class QQmlEngine;

/// Declares a property of SettingsModel that is an object of its own; the other arguments are those
/// of its constructor after the port.
#define TAVRIX_SETTING(Type, name, ...)     \
  Q_PROPERTY(Type* name READ name CONSTANT) \
 public:                                    \
  Type* name() { return &name##_; }         \
                                            \
 private:                                   \
  Type name##_{port_, __VA_ARGS__};
#define TAVRIX_SWITCH(name) TAVRIX_SETTING(SwitchSetting, name, #name)
/// The last three arguments are the ends of the slider and its step.
#define TAVRIX_NUMBER(name, unit, from, to, step) \
  TAVRIX_SETTING(NumberSetting, name, #name,      \
                 NumberSetting::Shape{NumberSetting::Unit::unit, from, to, step})

namespace tavrix::window {

class WindowSession;

/// The settings of the inspector, each an object of its own. Their values are the model's.
class SettingsModel : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON
  /// The reduced copies among the checked folders: "Оптимизированные копии: 12".
  Q_PROPERTY(QString optimizedTitle READ optimizedTitle NOTIFY countersChanged)
  /// True if there is a reduced copy, or if they are skipped.
  Q_PROPERTY(bool hasOptimized READ hasOptimized NOTIFY countersChanged)
  Q_PROPERTY(bool isOptimizedInfoOpen READ isOptimizedInfoOpen NOTIFY overlayChanged)
  /// True if the period begins after its end.
  Q_PROPERTY(bool isPeriodEmpty READ isPeriodEmpty NOTIFY changed)
  /// The homes of an owner who has moved, a line each; empty if there is only one.
  Q_PROPERTY(QString homesText READ homesText NOTIFY changed)
  /// The sentence about a home that is not certain, or an empty text.
  Q_PROPERTY(QString homeNote READ homeNote NOTIFY changed)
  Q_PROPERTY(bool isHomeManual READ isHomeManual NOTIFY changed)
  /// The name of a folder by the present template: "Например: 2026-05-16 — Рим".
  Q_PROPERTY(QString nameExample READ nameExample NOTIFY changed)

  SettingsPort port_;
  std::string systemZone_;
  std::string phoneName_;

  // The files to transfer.
  TAVRIX_SWITCH(includePhotos)
  TAVRIX_SWITCH(includeLive)
  TAVRIX_SWITCH(liveOnlyPhoto)
  TAVRIX_SWITCH(includeVideos)
  TAVRIX_SWITCH(includeAAE)
  TAVRIX_SETTING(ChoiceSetting, editedPolicy, "editedPolicy", editedPolicyChoices)
  TAVRIX_SWITCH(skipOptimized)
  TAVRIX_SWITCH(onlyNew)
  TAVRIX_SETTING(DaySetting, periodFrom, &Settings::Content::periodFrom)
  TAVRIX_SETTING(DaySetting, periodTo, &Settings::Content::periodTo)
  TAVRIX_SETTING(TimeZoneSetting, timeZone, systemZone_)
  TAVRIX_SWITCH(cameraDays)
  TAVRIX_SWITCH(datesFromNames)

  // How shots are grouped.
  TAVRIX_NUMBER(eventGapHours, hours, 0.5, 24, 0.5)
  TAVRIX_SWITCH(splitByDistance)
  TAVRIX_NUMBER(eventGapKm, kilometres, 1, 200, 1)
  TAVRIX_NUMBER(tripDistanceKm, kilometres, 10, 500, 10)
  TAVRIX_NUMBER(tripCityKm, kilometres, 5, 200, 5)
  TAVRIX_NUMBER(tripMinDays, days, 1, 14, 1)
  TAVRIX_NUMBER(tripMaxGapHours, hours, 6, 168, 6)
  TAVRIX_NUMBER(placeRadiusKm, kilometres, 0.5, 20, 0.5)
  TAVRIX_SETTING(ChoiceSetting, home, "homeOverride", homeChoices)
  TAVRIX_SWITCH(homePeriods)
  TAVRIX_SETTING(ChoiceSetting, homeMonths, "homeWindowMonths", homeMonthsChoices)

  // Names.
  TAVRIX_SETTING(ChoiceSetting, nameTemplate, "nameTemplate", templateChoices)
  TAVRIX_SETTING(PrefixSetting, prefix, phoneName_)
  TAVRIX_SWITCH(geocodingEnabled)
  TAVRIX_SWITCH(mergeDistricts)
  TAVRIX_SWITCH(mergeSameNames)
  TAVRIX_SWITCH(severalCities)
  TAVRIX_SWITCH(wholeFolderDates)
  TAVRIX_SWITCH(continueFolders)

  // Format.
  TAVRIX_SWITCH(photoJPEG)
  TAVRIX_NUMBER(jpegQuality, percent, 0, 100, 5)
  TAVRIX_SWITCH(videoH264)
  TAVRIX_SWITCH(separatePhotoVideo)
  TAVRIX_SWITCH(flattenSingleKind)
  TAVRIX_SWITCH(packAsZip)
  TAVRIX_SETTING(ChoiceSetting, packing, "packPerGroup", packingChoices)

 public:
  SettingsModel(WindowSession& session, const Words& words);
  static SettingsModel* create(QQmlEngine* engine, QJSEngine* script);

  QString optimizedTitle() const;
  bool hasOptimized() const;
  bool isOptimizedInfoOpen() const { return optimizedInfoPresented(model_.state()); }
  bool isPeriodEmpty() const;
  QString homesText() const { return QString::fromStdString(window::homesText(port_)); }
  QString homeNote() const { return QString::fromStdString(window::homeNote(port_)); }
  bool isHomeManual() const { return port_.now().gathering.homeOverride.has_value(); }
  QString nameExample() const;

  /// Opens or closes the explanation of reduced copies.
  Q_INVOKABLE void showOptimizedInfo(bool isOpen);
  /// Returns to the home that is detected.
  Q_INVOKABLE void forgetHome();

 Q_SIGNALS:
  void changed();
  void countersChanged();
  void overlayChanged();

 private:
  void follow(const StateChange& change);
  void announce();

  AppModel& model_;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window

#undef TAVRIX_SETTING
#undef TAVRIX_SWITCH
#undef TAVRIX_NUMBER
