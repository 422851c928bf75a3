#include "cli/sessions/FindingsText.h"

#include "cli/printing/ShellWord.h"
#include "cli/printing/UnreadableReason.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/RepairSentences.h"
#include "cli/sessions/Source.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "settings/FolderMaking.h"
#include "sources/SnapshotSource.h"
#include "text/DifferingText.h"
#include "text/SentenceParts.h"
#include "text/SourceSentences.h"

namespace tavrix::cli {
namespace {

void tellUnreadable(const CommandContext& context, const std::vector<UnreadableFolder>& folders) {
  if (folders.empty()) return;
  const Language language = context.language();
  const std::string first = forSentence(pathIn(context.call.operands.at(1), folders.front().path));
  const std::string reason = unreadableReason(language, folders.front().code);
  context.warn(folders.size() == 1
                   ? say(language, sentences::folderUnreadable, first, reason)
                   : say(language, sentences::foldersUnreadable,
                         counted(language, folders.size(), tavrix::sentences::folders), first,
                         reason));
}

void tellKnownCard(const CommandContext& context, const KnownCard& card) {
  const Language language = context.language();
  const std::string count = numberText(language, card.known);
  const std::string all = counted(language, card.planned, sentences::filesOfTotal);
  const bool isByName = card.phoneHash == snapshotPhone(card.label).hash;
  context.note(isByName
                   ? say(language, sentences::cardKnownByName, forSentence(card.label), count, all)
                   : say(language, sentences::cardKnownElsewhere, count, all));
}

/// Returns the command that gives the earlier names again. Returns nullopt if there is none, or if
/// it is too long for a sentence.
std::optional<std::string> commandOf(const WayBack& way) {
  constexpr std::size_t longest = 300;
  std::string command = way.locale ? "LC_ALL=" + shellWord(*way.locale) + ".UTF-8 " : "";
  command += "tavrix transfer …";
  for (const std::string& each : way.assignments) command += " --set " + shellWord(each);
  return way.isComplete && command.size() <= longest ? std::optional{command} : std::nullopt;
}

void tellCopiesAgain(const CommandContext& context, const CopiesAgain& again) {
  if (again.files == 0) return;
  const Language language = context.language();
  const std::string files = counted(language, again.files, tavrix::sentences::files);
  const auto& systemLocaleID = context.surroundings.systemLocaleID;
  const WayBack way =
      again.before ? wayBack(context.settings, systemLocaleID, *again.before) : WayBack{};
  if (way.keys.empty()) {
    const std::string first = again.folders.empty() ? "" : forSentence(again.folders.front());
    context.warn(first.empty() ? say(language, sentences::copiesAgain, files)
                               : say(language, sentences::copiesAgainFrom, files, first));
    return;
  }
  std::string keys;
  for (const std::string& key : way.keys) keys += (keys.empty() ? "" : ", ") + forSentence(key);
  context.warn(say(language, sentences::copiesAgainChanged, files, keys));
  if (const auto command = commandOf(way)) {
    context.warn(say(language, sentences::copiesAgainRemedy, printable(*command)));
  }
}

}  // namespace

void tellFindings(const CommandContext& context, const DestinationFindings& findings) {
  tellUnreadable(context, findings.unreadableFolders);
  for (const std::string& name : findings.damagedRecords) {
    context.warn(say(context.language(), sentences::recordDamagedTransfer, forSentence(name)));
  }
  if (findings.knownCard) tellKnownCard(context, *findings.knownCard);
  tellCopiesAgain(context, findings.again);
  for (const std::string& text : differingTexts(context.language(), findings.differing)) {
    context.warn(text);
  }
}

void tellSpace(const CommandContext& context, const DestinationFindings& findings) {
  if (findings.neededBytes <= findings.freeBytes) return;
  const Language language = context.language();
  context.warn(say(language, sentences::spaceHint, bytesText(language, findings.neededBytes),
                   bytesText(language, findings.freeBytes)));
}

}  // namespace tavrix::cli
