#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QString>

#include "foundation/Sentence.h"
#include "interface/words/ListSentences.h"
#include "interface/words/MainSentences.h"

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
  TAVRIX_WORD(foldersMergedNow)
  TAVRIX_WORD(undo)
  TAVRIX_WORD(close)
  TAVRIX_WORD(spaceKey)
  TAVRIX_WORD(folders)

  // The sidebar.

  // The inspector.

  // The bar below, questions and messages.

  // The waiting screen.

  // The transfer and its summary.

 Q_SIGNALS:
  void languageChanged();

 private:
  QString text(const Sentence<>& sentence) const {
    return QString::fromStdString(say(language_, sentence));
  }

  Language language_;
};

}  // namespace tavrix::window
