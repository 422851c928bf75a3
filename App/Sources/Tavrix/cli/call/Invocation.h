#pragma once

#include <optional>
#include <string>
#include <vector>

#include "foundation/Sentence.h"

namespace tavrix::sentences {}

namespace tavrix::cli {

/// Sentences that every front end says are found under the same name as those of the command line.
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

/// The arguments of one call, after the parser has checked their form.
struct Invocation {
  std::vector<std::string>
      operands;  ///< in the command's order; trailing optional ones may be missing
  bool json = false;
  bool verbose = false;
  bool explain = false;  ///< why folders were cut where they were
  Language language = Language::russian;
  std::optional<std::string> stateFolder;
  std::vector<std::string> settings;  ///< "KEY=VALUE", in the order given
  std::optional<std::string> deviceName;
  bool writeChecksums = false;
  bool resetsAll = false;                   ///< resets every setting
  std::optional<std::string> nameTemplate;  ///< JSON
  std::optional<std::string> context;       ///< JSON
  HistoryOptions history;

  const std::string& source() const { return operands.at(0); }
  const std::string& destination() const { return operands.back(); }
};

}  // namespace tavrix::cli
