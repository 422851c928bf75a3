#include "cli/PhoneSource.h"

#include <algorithm>

#include "DeviceText.h"
#include "cli/FolderSource.h"
#include "cli/PhoneSentences.h"
#include "cli/Quotes.h"
#include "cli/SourceSentences.h"
#include "device/CameraMediaSource.h"
#include "device/DeviceWatch.h"
#include "device/PhoneCatalogue.h"

namespace tavrix::cli {
namespace {

constexpr std::string_view anyPhone = "phone";
constexpr std::string_view phonePrefix = "phone:";

[[noreturn]] void fail(const CommandContext& context, const std::string& obstacle) {
  throw CommandFailure{ExitStatus::stopped,
                       obstacle + say(context.language(), sentences::tryAgain)};
}

std::string absenceOf(Language language, const std::string& number,
                      const std::vector<PhoneOnCable>& phones) {
  if (number.empty()) return say(language, sentences::noPhone);
  if (phones.empty()) return say(language, sentences::phoneNotThere, quoted(number));
  return say(language, sentences::anotherPhone, quoted(deviceNameOf(phones.front())),
             quoted(number));
}

PhoneOnCable findPhone(const CommandContext& context) {
  const Language language = context.language();
  const std::string number = wantedNumber(context);
  std::vector<PhoneOnCable> phones;
  try {
    phones = Phones::list(browserOf(context));
  } catch (const PhoneError&) {
    fail(context, say(language, sentences::phoneServiceMissing));
  }
  const auto found = std::find_if(phones.begin(), phones.end(), [&](const PhoneOnCable& phone) {
    return number.empty() || phone.deviceID == number || phone.serialNumber == number;
  });
  if (found == phones.end()) fail(context, absenceOf(language, number, phones));
  const PhoneOnCable phone = *found;
  const std::string obstacle = obstacleText(language, deviceNameOf(phone), phone.state);
  if (!obstacle.empty()) fail(context, obstacle);
  phones.erase(found);
  tellOthers(context, phone, phones);
  return phone;
}

}  // namespace

std::string wantedNumber(const CommandContext& context) {
  const std::string_view source = context.call.source();
  return std::string{source.starts_with(phonePrefix) ? source.substr(phonePrefix.size())
                                                     : std::string_view{}};
}

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
  try {
    const std::stop_token stop = context.surroundings.catchInterrupts();
    const auto files = browserOf(context).openFiles(phone.deviceID, stop);
    const std::string key = MetadataCache::phoneKey(phone.serialNumber);
    return readWithMetadata(context, key, phone.deviceID,
                            [&](MetadataPass::Setup setup, const std::stop_token& token) {
                              return PhoneCatalogue::read(*files, std::move(setup), token);
                            });
  } catch (const PhoneError& error) {
    if (error.kind() == PhoneError::Kind::stopped) {
      throw CommandFailure{ExitStatus::cancelled,
                           say(context.language(), sentences::readingStopped)};
    }
    fail(context, lossText(context.language(), deviceNameOf(phone), error.kind()));
  } catch (const FileError&) {
    fail(context,
         say(context.language(), sentences::phoneFolderRefused, quoted(deviceNameOf(phone))));
  }
}

std::unique_ptr<MediaSource> openPhone(const CommandContext& context) {
  return std::make_unique<CameraMediaSource>(
      CameraMediaSource::Setup{.browser = browserOf(context),
                               .deviceID = chosenPhone(context).deviceID,
                               .stop = context.surroundings.catchInterrupts(),
                               .oddPaths = context.source.oddPaths});
}

void tellOthers(const CommandContext& context, const PhoneOnCable& phone,
                const std::vector<PhoneOnCable>& others) {
  if (others.empty() || !wantedNumber(context).empty()) return;
  std::string list;
  for (const PhoneOnCable& other : others) {
    list.append(list.empty() ? "" : ", ").append(other.deviceID);
  }
  context.surroundings.err.write(
      "tavrix: " +
      say(context.language(), sentences::otherPhones, quoted(deviceNameOf(phone)), list) + '\n');
}

}  // namespace tavrix::cli
