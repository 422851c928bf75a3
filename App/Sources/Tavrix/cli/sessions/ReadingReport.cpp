#include "cli/sessions/ReadingReport.h"

#include <algorithm>
#include <array>

#include "device/cable/DeviceWatch.h"
#include "device/folders/SourceFolder.h"
#include "text/PhoneSentences.h"
#include "text/SentenceParts.h"
#include "text/SourceSentences.h"

namespace tavrix::cli {
namespace {

using SourceFolder::Reason;
using ListSentence = Sentence<std::string, std::string>;

struct ReasonSentence {
  Reason reason;
  const ListSentence& sentence;
};
constexpr std::array<ReasonSentence, 11> reasonSentences{{
    {Reason::hidden, sentences::leftOutHidden},
    {Reason::placeholder, sentences::leftOutPlaceholder},
    {Reason::link, sentences::leftOutLink},
    {Reason::special, sentences::leftOutSpecial},
    {Reason::unreadableFolder, sentences::leftOutUnreadableFolder},
    {Reason::unreadableFile, sentences::leftOutUnreadableFile},
    {Reason::tooDeep, sentences::leftOutTooDeep},
    {Reason::tooMany, sentences::leftOutTooMany},
    {Reason::tooLarge, sentences::leftOutTooLarge},
    {Reason::longName, sentences::leftOutLongName},
    {Reason::vanished, sentences::leftOutVanished},
}};

/// Returns "a, b, c and others".
std::string beginningOf(Language language, const std::vector<std::string>& paths) {
  constexpr std::size_t shown = 3;
  std::string text;
  for (std::size_t i = 0; i < std::min(shown, paths.size()); ++i) {
    text.append(i == 0 ? "" : ", ").append(forSentence(paths[i]));
  }
  if (paths.size() > shown) text += ' ' + say(language, sentences::andOthers);
  return text;
}

void tell(const CommandContext& context, const ListSentence& sentence,
          const std::vector<std::string>& paths) {
  if (paths.empty()) return;
  const Language language = context.language();
  context.warn(
      say(language, sentence, numberText(language, paths.size()), beginningOf(language, paths)));
}

void tellLeftOut(const CommandContext& context, const FolderCatalogue& catalogue) {
  const bool isOnCable = isPhone(context.call.source());
  for (const auto& [reason, sentence] : reasonSentences) {
    std::vector<std::string> paths;
    for (const auto& leftOut : catalogue.leftOut) {
      if (leftOut.reason == reason) paths.push_back(leftOut.path);
    }
    const bool isRefused = isOnCable && reason == Reason::unreadableFolder;
    tell(context, isRefused ? sentences::phoneFoldersRefused : sentence, paths);
  }
  tell(context, isOnCable ? sentences::phoneFilesRefused : sentences::unreadableFiles,
       catalogue.unreadable);
}

}  // namespace

void reportOtherMediaFolders(const CommandContext& context, const std::string& folder) {
  const Language language = context.language();
  const std::string& source = context.call.source();
  if (folder == source) return;
  for (const std::string& other : SourceFolder::otherCatalogueFolders(source)) {
    context.note(
        say(language, sentences::otherMediaFolder, forSentence(other), forSentence(folder)));
  }
}

void reportReading(const CommandContext& context, const FolderCatalogue& catalogue,
                   const std::string& sourceName) {
  tellLeftOut(context, catalogue);
  context.source.unreadFolders = catalogue.unreadFolders();
  writeLog(context.log, "folder read: items={}, left out={}, source={}", catalogue.items.size(),
           catalogue.leftOut.size(), PrivateField{sourceName});
}

void reportOtherPhones(const CommandContext& context, const PhoneOnCable& phone,
                       const std::vector<PhoneOnCable>& others) {
  if (others.empty() || !wantedNumber(context.call.source()).empty()) return;
  std::string list;
  for (const PhoneOnCable& other : others) {
    list.append(list.empty() ? "" : ", ").append(other.deviceID);
  }
  context.note(
      say(context.language(), sentences::otherPhones, forSentence(deviceNameOf(phone)), list));
}

}  // namespace tavrix::cli
