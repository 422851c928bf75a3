#include "runs/RunPause.h"

#include "foundation/Text.h"
#include "text/DeviceText.h"
#include "text/RunSentences.h"

namespace tavrix {
namespace {

struct Teller {
  Language language;

  std::string operator()(const run_pause::Phone& pause) const {
    return waitingText(language, lossText(language, pause.deviceName, pause.kind));
  }
  std::string operator()(const run_pause::DiskFull& pause) const {
    return say(language, sentences::diskFull, bytesText(language, pause.missingBytes),
               bytesText(language, pause.freeBytes));
  }
  std::string operator()(const run_pause::Destination& pause) const {
    return say(language, sentences::destinationAway, printable(pause.path));
  }
  std::string operator()(const run_pause::Busy&) const {
    return say(language, sentences::destinationInUse);
  }
};

}  // namespace

std::string pauseText(Language language, const RunPause& pause) {
  return std::visit(Teller{language}, pause);
}

}  // namespace tavrix
