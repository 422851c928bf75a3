#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QString>

#include "foundation/Sentence.h"
#include "interface/words/BoundarySentences.h"
#include "interface/words/DestinationBarSentences.h"
#include "interface/words/FolderPageSentences.h"
#include "interface/words/FormatSentences.h"
#include "interface/words/HowSentences.h"
#include "interface/words/InspectorSentences.h"
#include "interface/words/KeysSentences.h"
#include "interface/words/ListSentences.h"
#include "interface/words/MainSentences.h"
#include "interface/words/NamesSentences.h"
#include "interface/words/QuestionSentences.h"
#include "interface/words/SidebarSentences.h"
#include "interface/words/SummaryPageSentences.h"
#include "interface/words/TransferPageSentences.h"
#include "interface/words/WaitingSentences.h"
#include "interface/words/WhatSentences.h"

class QJSEngine;
class QQmlEngine;

/// Declares a property of Words with the name of a sentence in `window::sentences`.
#define TAVRIX_WORD(name)                                   \
  Q_PROPERTY(QString name READ name NOTIFY languageChanged) \
 public:                                                    \
  QString name() const { return text(sentences::name); }

namespace tavrix::window {

/// The texts of the window that have no values, in the chosen language: one property for each
/// sentence. Texts with values are made by the adapters. Used on the main loop only.
class Words : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_SINGLETON

 public:
  explicit Words(Language language) : language_(language) {}
  /// Returns the words that the engine was given.
  static Words* create(QQmlEngine* engine, QJSEngine* script);

  Language language() const { return language_; }
  /// Changes all texts.
  void setLanguage(Language language);

  // The main window.
  TAVRIX_WORD(programName)
  TAVRIX_WORD(openFolder)
  TAVRIX_WORD(layoutDays)
  TAVRIX_WORD(layoutMonths)
  TAVRIX_WORD(layoutYears)
  TAVRIX_WORD(layoutEvents)
  TAVRIX_WORD(layoutTrips)
  TAVRIX_WORD(layoutName)
  TAVRIX_WORD(searchHint)
  TAVRIX_WORD(followPhone)
  TAVRIX_WORD(toggleSidebar)
  TAVRIX_WORD(toggleInspector)
  TAVRIX_WORD(clearSearch)
  TAVRIX_WORD(chooseSource)

  // The list of folders.
  TAVRIX_WORD(onlyNew)
  TAVRIX_WORD(checkAll)
  TAVRIX_WORD(checkNone)
  TAVRIX_WORD(showAsGrid)
  TAVRIX_WORD(showAsList)
  TAVRIX_WORD(inPlace)
  TAVRIX_WORD(showAll)
  TAVRIX_WORD(checkFolders)
  TAVRIX_WORD(uncheckFolders)
  TAVRIX_WORD(renameFolder)
  TAVRIX_WORD(mergeFolders)
  TAVRIX_WORD(takeApart)
  TAVRIX_WORD(undoMerge)
  TAVRIX_WORD(copyName)
  TAVRIX_WORD(folderName)
  TAVRIX_WORD(mergeSuggested)
  TAVRIX_WORD(keepApart)
  TAVRIX_WORD(foldersMergedNow)
  TAVRIX_WORD(undo)
  TAVRIX_WORD(close)
  TAVRIX_WORD(spaceKey)
  TAVRIX_WORD(folders)
  TAVRIX_WORD(tipFolders)

  // The page of a folder.
  TAVRIX_WORD(viewShots)
  TAVRIX_WORD(enterKey)
  TAVRIX_WORD(backToFolders)
  TAVRIX_WORD(shotsOfFolder)
  TAVRIX_WORD(whyBoundary)
  TAVRIX_WORD(earlierShot)
  TAVRIX_WORD(laterShot)
  TAVRIX_WORD(openOutside)

  // The sidebar.
  TAVRIX_WORD(outlineName)
  TAVRIX_WORD(outlineOpen)
  TAVRIX_WORD(outlineClosed)

  // The inspector.
  TAVRIX_WORD(inspectorName)
  TAVRIX_WORD(inspectorWidth)
  TAVRIX_WORD(whatSection)
  TAVRIX_WORD(photosSwitch)
  TAVRIX_WORD(photosHelp)
  TAVRIX_WORD(liveSwitch)
  TAVRIX_WORD(liveHelp)
  TAVRIX_WORD(liveOnlyPhotoSwitch)
  TAVRIX_WORD(liveOnlyPhotoHelp)
  TAVRIX_WORD(videosSwitch)
  TAVRIX_WORD(videosHelp)
  TAVRIX_WORD(sidecarsSwitch)
  TAVRIX_WORD(sidecarsHelp)
  TAVRIX_WORD(editedTitle)
  TAVRIX_WORD(optimizedSwitch)
  TAVRIX_WORD(optimizedHelp)
  TAVRIX_WORD(optimizedInfo)
  TAVRIX_WORD(optimizedInfoWhat)
  TAVRIX_WORD(optimizedInfoRemedy)
  TAVRIX_WORD(onlyNewSwitch)
  TAVRIX_WORD(onlyNewHelp)
  TAVRIX_WORD(onlyNewInfo)
  TAVRIX_WORD(onlyNewExplanation)
  TAVRIX_WORD(onlyNewDeleted)
  TAVRIX_WORD(zipTakesAll)
  TAVRIX_WORD(periodTitle)
  TAVRIX_WORD(periodFromName)
  TAVRIX_WORD(periodToName)
  TAVRIX_WORD(periodFromHint)
  TAVRIX_WORD(periodToHint)
  TAVRIX_WORD(periodHelp)
  TAVRIX_WORD(periodEmpty)
  TAVRIX_WORD(dayUnknown)
  TAVRIX_WORD(dayChoose)
  TAVRIX_WORD(dayClear)
  TAVRIX_WORD(earlierMonth)
  TAVRIX_WORD(laterMonth)
  TAVRIX_WORD(calendarLocale)
  TAVRIX_WORD(zoneTitle)
  TAVRIX_WORD(zoneHelp)
  TAVRIX_WORD(datesFromNames)
  TAVRIX_WORD(datesFromNamesHelp)
  TAVRIX_WORD(cameraDays)
  TAVRIX_WORD(cameraDaysHelp)
  TAVRIX_WORD(zoneUnknown)
  TAVRIX_WORD(howSection)
  TAVRIX_WORD(whyTrips)
  TAVRIX_WORD(eventGap)
  TAVRIX_WORD(eventGapHelp)
  TAVRIX_WORD(splitByDistance)
  TAVRIX_WORD(splitByDistanceHelp)
  TAVRIX_WORD(eventDistance)
  TAVRIX_WORD(eventDistanceHelp)
  TAVRIX_WORD(tripDistance)
  TAVRIX_WORD(tripDistanceHelp)
  TAVRIX_WORD(tripCity)
  TAVRIX_WORD(tripCityHelp)
  TAVRIX_WORD(tripDays)
  TAVRIX_WORD(tripDaysHelp)
  TAVRIX_WORD(tripGap)
  TAVRIX_WORD(tripGapHelp)
  TAVRIX_WORD(placeRadius)
  TAVRIX_WORD(placeRadiusHelp)
  TAVRIX_WORD(homeTitle)
  TAVRIX_WORD(homeHelp)
  TAVRIX_WORD(homeAutomatic)
  TAVRIX_WORD(homePeriods)
  TAVRIX_WORD(homePeriodsHelp)
  TAVRIX_WORD(homeMonths)
  TAVRIX_WORD(homeMonthsHelp)
  TAVRIX_WORD(namesSection)
  TAVRIX_WORD(templateTitle)
  TAVRIX_WORD(prefixTitle)
  TAVRIX_WORD(prefixNone)
  TAVRIX_WORD(prefixPhone)
  TAVRIX_WORD(prefixCustom)
  TAVRIX_WORD(prefixDone)
  TAVRIX_WORD(prefixDraft)
  TAVRIX_WORD(prefixNoneHelp)
  TAVRIX_WORD(prefixPhoneHelp)
  TAVRIX_WORD(prefixCustomHelp)
  TAVRIX_WORD(placeNames)
  TAVRIX_WORD(placeNamesHelp)
  TAVRIX_WORD(mergeDistricts)
  TAVRIX_WORD(mergeDistrictsHelp)
  TAVRIX_WORD(mergeSameNames)
  TAVRIX_WORD(mergeSameNamesHelp)
  TAVRIX_WORD(severalCities)
  TAVRIX_WORD(severalCitiesHelp)
  TAVRIX_WORD(wholeFolderDates)
  TAVRIX_WORD(wholeFolderDatesHelp)
  TAVRIX_WORD(continueFolders)
  TAVRIX_WORD(continueFoldersHelp)
  TAVRIX_WORD(formatSection)
  TAVRIX_WORD(jpegSwitch)
  TAVRIX_WORD(jpegHelp)
  TAVRIX_WORD(jpegQuality)
  TAVRIX_WORD(jpegQualityHelp)
  TAVRIX_WORD(h264Switch)
  TAVRIX_WORD(h264Help)
  TAVRIX_WORD(subfoldersSwitch)
  TAVRIX_WORD(subfoldersHelp)
  TAVRIX_WORD(flattenSwitch)
  TAVRIX_WORD(flattenHelp)
  TAVRIX_WORD(zipSwitch)
  TAVRIX_WORD(zipHelp)
  TAVRIX_WORD(zipTitle)
  TAVRIX_WORD(zipOne)
  TAVRIX_WORD(zipPerFolder)
  TAVRIX_WORD(whatForgotten)
  TAVRIX_WORD(namesForgotten)
  TAVRIX_WORD(formatForgotten)
  TAVRIX_WORD(less)
  TAVRIX_WORD(more)

  // The bar below, questions and messages.
  TAVRIX_WORD(destinationLabel)
  TAVRIX_WORD(destinationHint)
  TAVRIX_WORD(chooseFolder)
  TAVRIX_WORD(chooseDestinationTitle)
  TAVRIX_WORD(keepNames)
  TAVRIX_WORD(understood)
  TAVRIX_WORD(cancel)
  TAVRIX_WORD(transferEverything)
  TAVRIX_WORD(skipOptimized)
  TAVRIX_WORD(stopTitle)
  TAVRIX_WORD(stop)
  TAVRIX_WORD(stopAndClose)
  TAVRIX_WORD(keepGoing)
  TAVRIX_WORD(dropTitle)
  TAVRIX_WORD(dropAccept)

  // The list of keys.
  TAVRIX_WORD(keysTitle)
  TAVRIX_WORD(keySearch)
  TAVRIX_WORD(keyLayouts)
  TAVRIX_WORD(keyColumns)
  TAVRIX_WORD(keyCheckAll)
  TAVRIX_WORD(keySpace)
  TAVRIX_WORD(keyEnter)
  TAVRIX_WORD(keyRename)
  TAVRIX_WORD(keyMerge)
  TAVRIX_WORD(keyCopy)
  TAVRIX_WORD(keySource)
  TAVRIX_WORD(keyDestination)
  TAVRIX_WORD(keyTransfer)
  TAVRIX_WORD(keyBack)

  // The waiting screen.
  TAVRIX_WORD(stepPlug)
  TAVRIX_WORD(stepUnlock)
  TAVRIX_WORD(stepTrust)
  TAVRIX_WORD(retry)
  TAVRIX_WORD(stopReading)
  TAVRIX_WORD(orDropFolder)
  TAVRIX_WORD(waitForPhone)

  // The transfer and its summary.
  TAVRIX_WORD(transferWaits)
  TAVRIX_WORD(cancelTransfer)
  TAVRIX_WORD(foldersOfRun)
  TAVRIX_WORD(openFolderOfRun)
  TAVRIX_WORD(again)
  TAVRIX_WORD(done)
  TAVRIX_WORD(failedTitle)
  TAVRIX_WORD(keptTitle)
  TAVRIX_WORD(notesTitle)
  TAVRIX_WORD(numbersTitle)

 Q_SIGNALS:
  void languageChanged();

 private:
  QString text(const Sentence<>& sentence) const {
    return QString::fromStdString(say(language_, sentence));
  }

  Language language_;
};

}  // namespace tavrix::window
