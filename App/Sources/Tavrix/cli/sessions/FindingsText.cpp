#include "cli/sessions/FindingsText.h"

#include "cli/printing/UnreadableReason.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sessions/Source.h"
#include "foundation/Sentences.h"
#include "sources/SnapshotSource.h"
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
  context.warn(isByName
                   ? say(language, sentences::cardKnownByName, forSentence(card.label), count, all)
                   : say(language, sentences::cardKnownElsewhere, count, all));
}

/// Returns the argument that brings back the value of a setting.
std::string argumentOf(const CopiesAgain::Change& change) {
  const bool isPlain = change.before.find_first_of(" '\"") == std::string::npos;
  const std::string assignment = change.key + "=" + change.before;
  return " --set " + (isPlain ? assignment : "'" + assignment + "'");
}

/// Returns the command that keeps the names. Returns nullopt if that is too long for a sentence.
std::optional<std::string> remedyOf(const CopiesAgain& again) {
  std::string language;
  std::string arguments;
  for (const CopiesAgain::Change& change : again.changes) {
    if (change.before.empty() || change.key == "nameTemplate") return std::nullopt;
    if (change.key == "locale") {
      language = "LC_ALL=" + change.before + ".UTF-8 ";
    } else {
      arguments += argumentOf(change);
    }
  }
  return language + "tavrix transfer …" + arguments;
}

void tellCopiesAgain(const CommandContext& context, const CopiesAgain& again) {
  if (again.files == 0) return;
  const Language language = context.language();
  const std::string files = counted(language, again.files, tavrix::sentences::files);
  if (again.changes.empty()) {
    const std::string first = again.folders.empty() ? "" : forSentence(again.folders.front());
    context.warn(first.empty() ? say(language, sentences::copiesAgain, files)
                               : say(language, sentences::copiesAgainFrom, files, first));
    return;
  }
  std::string keys;
  for (const CopiesAgain::Change& change : again.changes) {
    keys += (keys.empty() ? "" : ", ") + change.key;
  }
  context.warn(say(language, sentences::copiesAgainChanged, files, keys));
  if (const auto remedy = remedyOf(again)) {
    context.warn(say(language, sentences::copiesAgainRemedy, *remedy));
  }
}

}  // namespace

void tellFindings(const CommandContext& context, const DestinationFindings& findings) {
  tellUnreadable(context, findings.unreadableFolders);
  if (findings.knownCard) tellKnownCard(context, *findings.knownCard);
  tellCopiesAgain(context, findings.again);
}

void tellSpace(const CommandContext& context, const DestinationFindings& findings) {
  if (findings.neededBytes <= findings.freeBytes) return;
  const Language language = context.language();
  context.warn(say(language, sentences::spaceHint, bytesText(language, findings.neededBytes),
                   bytesText(language, findings.freeBytes)));
}

}  // namespace tavrix::cli
