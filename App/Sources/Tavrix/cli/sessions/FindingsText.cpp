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

}  // namespace

void tellFindings(const CommandContext& context, const DestinationFindings& findings) {
  tellUnreadable(context, findings.unreadableFolders);
  if (findings.knownCard) tellKnownCard(context, *findings.knownCard);
}

void tellSpace(const CommandContext& context, const DestinationFindings& findings) {
  if (findings.neededBytes <= findings.freeBytes) return;
  const Language language = context.language();
  context.warn(say(language, sentences::spaceHint, bytesText(language, findings.neededBytes),
                   bytesText(language, findings.freeBytes)));
}

}  // namespace tavrix::cli
