// The command that lists the phones on the cable.

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/Source.h"
#include "device/cable/Phones.h"
#include "text/PhoneSentences.h"
#include "text/SentenceParts.h"

namespace tavrix::cli {
namespace {

const Sentence<>& sentenceOf(PhoneState state) {
  switch (state) {
    case PhoneState::ready:
      return sentences::stateReady;
    case PhoneState::locked:
      return sentences::stateLocked;
    case PhoneState::trustPending:
      return sentences::stateTrustPending;
    case PhoneState::trustDenied:
      return sentences::stateTrustDenied;
    case PhoneState::silent:
      return sentences::stateSilent;
    case PhoneState::unreachable:
      break;
  }
  return sentences::stateUnreachable;
}

std::vector<PhoneOnCable> phonesOnCable(const CommandContext& context) {
  try {
    return Phones::list(browserOf(context));
  } catch (const PhoneError&) {
    throw CommandFailure{ExitStatus::stopped,
                         say(context.language(), sentences::phoneServiceMissing) +
                             say(context.language(), sentences::tryAgain)};
  }
}

void printJson(TextSink& out, const std::vector<PhoneOnCable>& phones) {
  JsonWriter json{out};
  json.beginArray();
  for (const PhoneOnCable& phone : phones) {
    json.beginObject().field("deviceID", phone.deviceID);
    if (phone.model) json.field("model", *phone.model);
    if (phone.name) json.field("name", *phone.name);
    if (phone.serialNumber) json.field("serialNumber", *phone.serialNumber);
    json.field("state", textOf(phone.state)).endObject();
  }
  json.endArray().finish();
}

std::string lineOf(Language language, const PhoneOnCable& phone) {
  std::string line = forSentence(phone.name.value_or("iPhone"));
  if (phone.model) line += " (" + forSentence(*phone.model) + ")";
  // Only this number is known in every state.
  line += ", " + forSentence(phone.deviceID) + " — ";
  return line + say(language, sentenceOf(phone.state)) + '\n';
}

}  // namespace

ExitStatus listPhones(const CommandContext& context) {
  const auto phones = phonesOnCable(context);
  TextSink& out = context.surroundings.out;
  if (context.call.json) {
    printJson(out, phones);
    return ExitStatus::done;
  }
  const Language language = context.language();
  if (phones.empty()) out.write(say(language, sentences::noPhonesListed) + '\n');
  for (const PhoneOnCable& phone : phones) out.write(lineOf(language, phone));
  return ExitStatus::done;
}

}  // namespace tavrix::cli
