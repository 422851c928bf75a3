#include "cli/PhoneSource.h"

#include <algorithm>
#include <thread>

#include "cli/FolderSource.h"
#include "cli/PhoneSentences.h"
#include "cli/Quotes.h"
#include "cli/SourceSentences.h"
#include "device/CameraMediaSource.h"
#include "device/PhoneCatalogue.h"

namespace tavrix::cli {
namespace {

constexpr std::string_view anyPhone = "phone";
constexpr std::string_view phonePrefix = "phone:";

/// The number that a call asks for; empty when the first phone will do.
std::string_view wantedNumber(const CommandContext& context) {
  const std::string_view source = context.call.source();
  return source.starts_with(phonePrefix) ? source.substr(phonePrefix.size()) : std::string_view{};
}

bool isWanted(const PhoneOnCable& phone, std::string_view number) {
  return number.empty() || phone.deviceID == number || phone.serialNumber == number;
}

std::string nameOf(const PhoneOnCable& phone) {
  return quoted(phone.name.value_or(phone.deviceID));
}

/// What a look at the cable found: a phone that is ready, or what is in the way.
struct Look {
  std::optional<PhoneOnCable> phone;
  std::string obstacle;              ///< a sentence without its end
  std::vector<PhoneOnCable> others;  ///< on the cable besides the phone
};

std::string obstacleOf(Language language, const PhoneOnCable& phone) {
  switch (phone.state) {
    case PhoneState::ready:
      break;
    case PhoneState::locked:
      return say(language, sentences::phoneLocked, nameOf(phone));
    case PhoneState::trustPending:
      return say(language, sentences::phoneTrustPending, nameOf(phone));
    case PhoneState::trustDenied:
      return say(language, sentences::phoneTrustDenied, nameOf(phone));
    case PhoneState::unreachable:
      return say(language, sentences::phoneUnreachable, nameOf(phone));
    case PhoneState::silent:
      return say(language, sentences::phoneSilent, nameOf(phone));
  }
  return {};
}

std::string absenceOf(Language language, std::string_view number) {
  if (number.empty()) return say(language, sentences::noPhone);
  return say(language, sentences::phoneNotThere, quoted(number));
}

/// The first phone stays the one that is meant, whatever is in its way. Throws PhoneError
/// (stopped).
Look lookFor(const CommandContext& context, std::string_view number,
             const std::stop_token& stop = {}) {
  const Language language = context.language();
  Look look;
  try {
    auto phones = Phones::list(browserOf(context), stop);
    const auto found = std::find_if(phones.begin(), phones.end(),
                                    [&](const auto& phone) { return isWanted(phone, number); });
    if (found == phones.end()) {
      look.obstacle = absenceOf(language, number);
      return look;
    }
    look.phone = *found;
    const auto& known = context.source.phone;
    // Who does not answer tells no name either.
    if (!found->name && known && known->deviceID == found->deviceID) look.phone->name = known->name;
    phones.erase(found);
    look.others = std::move(phones);
    look.obstacle = obstacleOf(language, *look.phone);
  } catch (const PhoneError& error) {
    if (error.kind() == PhoneError::Kind::stopped) throw;
    look.obstacle = say(language, sentences::phoneServiceMissing);
  }
  return look;
}

/// Writes a sentence of its own line, where a bar may stand.
void tell(const CommandContext& context, const std::string& sentence) {
  const bool mayHaveBar = context.surroundings.errColumns.has_value();
  context.surroundings.err.write((mayHaveBar ? "\r\x1b[Ktavrix: " : "tavrix: ") + sentence + '\n');
}

void pause(const std::stop_token& stop) {
  constexpr std::chrono::milliseconds slice{50};
  constexpr int slices = 10;
  for (int i = 0; i < slices && !stop.stop_requested(); ++i) std::this_thread::sleep_for(slice);
}

/// Looks again and again, telling each new obstacle once, until the phone is ready; nothing when an
/// interrupt comes first. `told` is the obstacle that the person knows of.
std::optional<Look> waitFor(const CommandContext& context, std::string_view number,
                            std::string told) {
  const Language language = context.language();
  const std::stop_token stop = context.surroundings.catchInterrupts();
  while (!stop.stop_requested()) {
    Look look;
    try {
      look = lookFor(context, number, stop);
    } catch (const PhoneError&) {
      break;
    }
    if (look.obstacle.empty()) return look;
    if (look.obstacle != told) {
      tell(context, look.obstacle + say(language, sentences::carryOnByMyself));
      told = look.obstacle;
    }
    pause(stop);
  }
  return std::nullopt;
}

[[noreturn]] void failWaiting(const CommandContext& context) {
  throw CommandFailure{ExitStatus::cancelled, say(context.language(), sentences::waitingStopped)};
}

bool waits(const CommandContext& context) { return context.call.command == Command::transfer; }

void tellOthers(const CommandContext& context, const Look& look) {
  if (look.others.empty() || !wantedNumber(context).empty()) return;
  std::string list;
  for (const PhoneOnCable& other : look.others) {
    list.append(list.empty() ? "" : ", ").append(other.deviceID);
  }
  tell(context, say(context.language(), sentences::otherPhones, nameOf(*look.phone), list));
}

PhoneOnCable findPhone(const CommandContext& context) {
  const std::string_view number = wantedNumber(context);
  // Whoever is going to wait is interrupted by asking, from the first question on.
  const std::stop_token stop =
      waits(context) ? context.surroundings.catchInterrupts() : std::stop_token{};
  Look look;
  try {
    look = lookFor(context, number, stop);
  } catch (const PhoneError&) {
    failWaiting(context);
  }
  if (!look.obstacle.empty() && !waits(context)) {
    throw CommandFailure{ExitStatus::stopped,
                         look.obstacle + say(context.language(), sentences::tryAgain)};
  }
  if (!look.obstacle.empty()) {
    tell(context, look.obstacle + say(context.language(), sentences::carryOnByMyself));
    auto found = waitFor(context, number, look.obstacle);
    if (!found) failWaiting(context);
    look = *std::move(found);
  }
  tellOthers(context, look);
  return *look.phone;
}

/// Waits for a phone that was there already; false when an interrupt comes first.
bool awaitReturn(const CommandContext& context, PhoneError::Kind kind) {
  const std::string deviceID = chosenPhone(context).deviceID;
  const Language language = context.language();
  std::string told;
  if (kind == PhoneError::Kind::gone) {
    told = absenceOf(language, deviceID);
    tell(context, say(language, sentences::phoneGone) + say(language, sentences::carryOnByMyself));
  } else if (kind == PhoneError::Kind::silent) {
    told = say(language, sentences::phoneSilent, nameOf(chosenPhone(context)));
    tell(context, told + say(language, sentences::carryOnByMyself));
  }
  writeLog(context.log, "phone lost: waiting");
  if (!waitFor(context, deviceID, told)) return false;
  tell(context, say(language, sentences::phoneIsBack));
  return true;
}

/// What is to be told when there is no way to the phone any more.
std::string lossOf(const CommandContext& context, PhoneOnCable phone, PhoneError::Kind kind) {
  switch (kind) {
    case PhoneError::Kind::locked:
      phone.state = PhoneState::locked;
      break;
    case PhoneError::Kind::trustPending:
      phone.state = PhoneState::trustPending;
      break;
    case PhoneError::Kind::trustDenied:
      phone.state = PhoneState::trustDenied;
      break;
    case PhoneError::Kind::silent:
      phone.state = PhoneState::silent;
      break;
    default:
      return say(context.language(), sentences::phoneGone);
  }
  return obstacleOf(context.language(), phone);
}

[[noreturn]] void failReading(const CommandContext& context) {
  throw CommandFailure{ExitStatus::cancelled, say(context.language(), sentences::readingStopped)};
}

std::vector<SnapshotItem> readOnce(const CommandContext& context, const PhoneOnCable& phone) {
  const std::stop_token stop = context.surroundings.catchInterrupts();
  const auto files = browserOf(context).openFiles(phone.deviceID, stop);
  const std::string key = MetadataCache::phoneKey(
      phone.serialNumber ? phone.serialNumber : std::optional{phone.deviceID});
  return readWithMetadata(context, key, phone.deviceID,
                          [&](MetadataPass::Setup setup, const std::stop_token& token) {
                            return PhoneCatalogue::read(*files, std::move(setup), token);
                          });
}

}  // namespace

PhoneBrowser& browserOf(const CommandContext& context) {
  if (context.surroundings.phones == nullptr) throw PhoneError{PhoneError::Kind::noService};
  return *context.surroundings.phones;
}

bool isPhone(std::string_view source) {
  return source == anyPhone || source.starts_with(phonePrefix);
}

const PhoneOnCable& chosenPhone(const CommandContext& context) {
  if (!context.source.phone) context.source.phone = findPhone(context);
  return *context.source.phone;
}

std::vector<SnapshotItem> readPhone(const CommandContext& context) {
  const PhoneOnCable& phone = chosenPhone(context);
  for (;;) {
    try {
      return readOnce(context, phone);
    } catch (const PhoneError& error) {
      if (error.kind() == PhoneError::Kind::stopped) failReading(context);
      if (!waits(context)) {
        throw CommandFailure{ExitStatus::stopped, lossOf(context, phone, error.kind()) +
                                                      say(context.language(), sentences::tryAgain)};
      }
      if (!awaitReturn(context, error.kind())) failWaiting(context);
    }
  }
}

std::unique_ptr<MediaSource> openPhone(const CommandContext& context) {
  return std::make_unique<CameraMediaSource>(
      CameraMediaSource::Setup{.browser = browserOf(context),
                               .deviceID = chosenPhone(context).deviceID,
                               .awaitPhone =
                                   [&context](PhoneError::Kind kind) {
                                     ++context.source.phoneWaits;
                                     return awaitReturn(context, kind);
                                   },
                               .stop = context.surroundings.catchInterrupts()});
}

}  // namespace tavrix::cli
