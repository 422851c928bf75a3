#include "text/DeviceText.h"

#include "device/cable/DeviceWatch.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "text/PhoneSentences.h"
#include "text/SourceSentences.h"

namespace tavrix {
namespace {

using State = DeviceState;
namespace words = sentences;

constexpr Sentence<std::string> connecting{"Подключаюсь к iPhone «{}»…",
                                           "Connecting to the iPhone “{}”…"};
constexpr Sentence<std::string, std::string> listing{"Получаю список файлов iPhone «{}»: {}",
                                                     "Listing the files of the iPhone “{}”: {}"};
constexpr Sentence<std::string, std::string, std::string> listingOf{
    "Получаю список файлов iPhone «{}»: {}; в прошлый раз — {}",
    "Listing the files of the iPhone “{}”: {}; last time: {}"};
constexpr Sentence<std::string, std::string, std::string> reading{
    "Читаю сведения о файлах iPhone «{}»: {} / {}",
    "Reading the details of the files of the iPhone “{}”: {} / {}"};
constexpr Sentence<> unseen =
    onPlatform(Sentence<>{"iPhone подключён, но macOS его не передаёт",
                          "The iPhone is connected, but macOS does not pass it on"},
               Sentence<>{"iPhone подключён, но система его не передаёт",
                          "The iPhone is connected, but the system does not pass it on"});

/// Returns the obstacle that each state stands for, or an empty text.
struct ObstacleTeller {
  Language language;

  std::string of(const std::string& deviceName, PhoneState state) const {
    return obstacleText(language, deviceName, state);
  }
  std::string operator()(const State::Waiting&) const { return say(language, words::noPhone); }
  std::string operator()(const State::Locked& state) const {
    return of(state.deviceName, PhoneState::locked);
  }
  std::string operator()(const State::Connecting& state) const {
    return state.awaitsTrust ? of(state.deviceName, PhoneState::trustPending) : std::string{};
  }
  std::string operator()(const State::Stopped& state) const {
    const bool hasLeft = state.reason == State::Stopped::Reason::phoneLeft;
    return hasLeft ? say(language, words::phoneGone) : std::string{};
  }
  std::string operator()(const State::Failed& state) const {
    switch (state.reason) {
      case State::Failed::Reason::noService:
        return say(language, words::phoneServiceMissing);
      case State::Failed::Reason::trustDenied:
        return of(state.deviceName, PhoneState::trustDenied);
      case State::Failed::Reason::unreachable:
        return of(state.deviceName, PhoneState::unreachable);
      case State::Failed::Reason::silent:
        return of(state.deviceName, PhoneState::silent);
      case State::Failed::Reason::folderRefused:
        return say(language, words::phoneFolderRefused, printable(state.deviceName));
    }
    return {};
  }
  template <typename Progressing>
  std::string operator()(const Progressing&) const {
    return {};
  }
};

/// Returns the sentence for each state that is no obstacle.
struct ProgressTeller {
  Language language;

  std::string operator()(const State::Connecting& state) const {
    return say(language, connecting, printable(state.deviceName));
  }
  std::string operator()(const State::Enumerating& state) const {
    const std::string name = printable(state.deviceName);
    const std::string found = counted(language, state.itemsFound, sentences::files);
    if (!state.itemsExpected) return say(language, listing, name, found);
    return say(language, listingOf, name, found, numberText(language, *state.itemsExpected));
  }
  std::string operator()(const State::ReadingMetadata& state) const {
    return say(language, reading, printable(state.deviceName),
               numberText(language, state.status.done()), numberText(language, state.status.total));
  }
  std::string operator()(const State::Stopped&) const {
    return say(language, words::readingStopped);
  }
  template <typename Other>
  std::string operator()(const Other&) const {
    return {};
  }
};

}  // namespace

std::string obstacleText(Language language, const std::string& deviceName, PhoneState state) {
  const std::string name = printable(deviceName);
  switch (state) {
    case PhoneState::ready:
      break;
    case PhoneState::locked:
      return say(language, words::phoneLocked, name);
    case PhoneState::trustPending:
      return say(language, words::phoneTrustPending, name);
    case PhoneState::trustDenied:
      return say(language, words::phoneTrustDenied, name);
    case PhoneState::unreachable:
      return say(language, words::phoneUnreachable, name);
    case PhoneState::silent:
      return say(language, words::phoneSilent, name);
  }
  return {};
}

std::string obstacleText(Language language, const DeviceState& state) {
  return std::visit(ObstacleTeller{language}, state.kind);
}

std::string lossText(Language language, const std::string& deviceName, PhoneError::Kind kind) {
  const PhoneState state = stateOf(kind);
  if (state == PhoneState::unreachable) return say(language, words::phoneGone);
  return obstacleText(language, deviceName, state);
}

std::string waitingText(Language language, const std::string& obstacle) {
  return obstacle + say(language, words::carryOnByMyself);
}

std::string deviceText(Language language, const DeviceState& state) {
  const std::string obstacle = obstacleText(language, state);
  return obstacle.empty() ? std::visit(ProgressTeller{language}, state.kind)
                          : waitingText(language, obstacle);
}

std::string unseenPhoneText(Language language) { return say(language, unseen); }

}  // namespace tavrix
