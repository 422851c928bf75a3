#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/call/ProgressForm.h"
#include "foundation/Sentence.h"

namespace tavrix::sentences {}

namespace tavrix::cli {

/// Makes the sentences of every front end visible beside those of the command line.
namespace sentences {
using namespace tavrix::sentences;
}

/// The filters of `tavrix history`.
struct HistoryOptions {
  std::optional<std::string> outcome;
  std::optional<std::string> phone;
  std::optional<std::string> destination;
  std::optional<std::string> path;
  std::optional<std::string> asset;
  bool deletes = false;
};

/// The choice of folders and shots for `groups`, `plan` and `transfer`.
struct ChoiceOptions {
  std::vector<std::string> only;
  std::optional<std::string> last;
  bool sinceLast = false;
  std::vector<std::string> exclude;
};

/// How `thumbnails` writes them.
struct ThumbnailOptions {
  std::optional<std::string> size;   ///< of the longest side in pixels
  std::optional<std::string> sheet;  ///< the folder of the page that shows them
};

/// The arguments of one call, after the parser has checked their form.
struct Invocation {
  std::vector<std::string>
      operands;  ///< in the order of the command; the last may be missing if it is optional
  bool json = false;
  bool verbose = false;
  bool isQuiet = false;  ///< without notes and progress
  ProgressForm progress = ProgressForm::bar;
  bool explain = false;             ///< prints why folders were split where they are
  bool explainsAll = false;         ///< the same, with the reason of every shot
  bool acceptsSuggestions = false;  ///< merges the folders that are suggested, for good
  Language language = Language::russian;
  std::optional<std::string> stateFolder;
  std::vector<std::string> settings;  ///< "KEY=VALUE", in the order given
  std::optional<std::string> deviceName;
  bool isRehearsal = false;  ///< the transfer is planned only
  bool listsFiles = false;   ///< the plan names every file
  bool writeChecksums = false;
  bool resetsAll = false;                   ///< resets every setting
  bool describesAll = false;                ///< explains every setting
  std::optional<std::string> nameTemplate;  ///< as givenTemplate() reads it
  std::optional<std::string> context;       ///< JSON
  std::optional<std::string> windowDestination;
  HistoryOptions history;
  ChoiceOptions choice;
  ThumbnailOptions thumbnails;

  const std::string& source() const { return operands.at(0); }
  const std::string& destination() const { return operands.back(); }
};

}  // namespace tavrix::cli
