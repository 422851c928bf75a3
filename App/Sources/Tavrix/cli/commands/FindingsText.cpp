#include "cli/FindingsText.h"

#include "cli/CliSentences.h"
#include "cli/Quotes.h"
#include "cli/Source.h"
#include "cli/SourceSentences.h"
#include "cli/UnreadableReason.h"
#include "foundation/Sentences.h"

namespace tavrix::cli {
namespace {

void warn(const CommandContext& context, const std::string& sentence) {
  context.surroundings.err.write("tavrix: " + sentence + '\n');
}

void tellUnreadable(const CommandContext& context, const std::vector<UnreadableFolder>& folders) {
  if (folders.empty()) return;
  const Language language = context.language();
  const std::string first = quoted(pathIn(context.call.operands.at(1), folders.front().path));
  const std::string reason = unreadableReason(language, folders.front().code);
  warn(context,
       folders.size() == 1
           ? say(language, sentences::folderUnreadable, first, reason)
           : say(language, sentences::foldersUnreadable,
                 counted(language, folders.size(), tavrix::sentences::folders), first, reason));
}

void tellKnownCard(const CommandContext& context, const KnownCard& card) {
  const Language language = context.language();
  const std::string count = numberText(language, card.known);
  const std::string all = counted(language, card.planned, sentences::filesOfTotal);
  const bool isByName = card.phoneHash == snapshotPhone(card.label).hash;
  warn(context, isByName ? say(language, sentences::cardKnownByName, quoted(card.label), count, all)
                         : say(language, sentences::cardKnownElsewhere, count, all));
}

}  // namespace

void tellFindings(const CommandContext& context, const RunFindings& findings) {
  tellUnreadable(context, findings.unreadableFolders);
  if (findings.knownCard) tellKnownCard(context, *findings.knownCard);
}

void tellSpace(const CommandContext& context, const RunFindings& findings) {
  if (findings.neededBytes <= findings.freeBytes) return;
  const Language language = context.language();
  warn(context, say(language, sentences::spaceHint, bytesText(language, findings.neededBytes),
                    bytesText(language, findings.freeBytes)));
}

}  // namespace tavrix::cli
