#include "DeviceText.h"

#include "cli/PhoneSentences.h"
#include "cli/SourceSentences.h"
#include "device/DeviceWatch.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"

namespace tavrix {
namespace {

using State = DeviceState;
namespace words = cli::sentences;

constexpr Sentence<std::string> connecting{"Подключаюсь к iPhone «{}»…",
                                           "Connecting to the iPhone “{}”…"};
constexpr Sentence<std::string, std::string> listing{"Получаю список файлов iPhone «{}»: {}",
                                                     "Listing the files of the iPhone “{}”: {}"};
constexpr Sentence<std::string, std::string, std::string> listingOf{
    "Получаю список файлов iPhone «{}»: {}; в прошлый раз — {}",
    "Listing the files of the iPhone “{}”: {}; the last time, {}"};
constexpr Sentence<std::string, std::string, std::string> reading{
    "Читаю сведения о файлах iPhone «{}»: {} / {}",
    "Reading about the files of the iPhone “{}”: {} / {}"};
constexpr Sentence<> unseen{"iPhone подключён, но macOS его не передаёт",
                            "The iPhone is connected, but macOS does not pass it on"};

/// Says the sentence for each state.
struct Teller {
  Language language;

  std::string waits(const std::string& obstacle) const { return waitingText(language, obstacle); }
  std::string waits(const std::string& deviceName, PhoneState state) const {
    return waits(obstacleText(language, deviceName, state));
  }

  std::string operator()(const State::Waiting&) const {
    return waits(say(language, words::noPhone));
  }
  std::string operator()(const State::Locked& state) const {
    return waits(state.deviceName, PhoneState::locked);
  }
  std::string operator()(const State::Connecting& state) const {
    if (state.awaitsTrust) return waits(state.deviceName, PhoneState::trustPending);
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
  std::string operator()(const State::Stopped& state) const {
    if (state.reason == State::Stopped::Reason::asked) return say(language, words::readingStopped);
    return waits(say(language, words::phoneGone));
  }
  std::string operator()(const State::Ready&) const { return {}; }
  std::string operator()(const State::Failed& state) const {
    switch (state.reason) {
      case State::Failed::Reason::noService:
        return waits(say(language, words::phoneServiceMissing));
      case State::Failed::Reason::trustDenied:
        return waits(state.deviceName, PhoneState::trustDenied);
      case State::Failed::Reason::unreachable:
        return waits(state.deviceName, PhoneState::unreachable);
      case State::Failed::Reason::silent:
        return waits(state.deviceName, PhoneState::silent);
      case State::Failed::Reason::folderRefused:
        return waits(say(language, words::phoneFolderRefused, printable(state.deviceName)));
    }
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

std::string lossText(Language language, const std::string& deviceName, PhoneError::Kind kind) {
  const PhoneState state = stateOf(kind);
  if (state == PhoneState::unreachable) return say(language, words::phoneGone);
  return obstacleText(language, deviceName, state);
}

std::string waitingText(Language language, const std::string& obstacle) {
  return obstacle + say(language, words::carryOnByMyself);
}

std::string deviceText(Language language, const DeviceState& state) {
  return std::visit(Teller{language}, state.kind);
}

std::string unseenPhoneText(Language language) { return say(language, unseen); }

}  // namespace tavrix
