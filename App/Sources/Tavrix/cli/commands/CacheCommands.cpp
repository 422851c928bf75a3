// The commands that show and reset the metadata cache.

#include "cli/commands/Commands.h"
#include "cli/printing/JsonPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/Source.h"
#include "device/metadata/MetadataCache.h"
#include "foundation/Text.h"
#include "text/SourceSentences.h"

namespace tavrix::cli {
namespace {

void printLine(const CommandContext& context, const std::string& line) {
  context.surroundings.out.write(line + '\n');
}

std::string resetText(Language language, const MetadataCache::Removal& removal) {
  if (removal.removed == 0) return say(language, sentences::cacheWasEmpty);
  return say(language, sentences::cacheReset, counted(language, removal.removed, sentences::files));
}

}  // namespace

ExitStatus showCache(const CommandContext& context) {
  const std::string folder = requiredStateFolder(context);
  const std::uint64_t records = MetadataCache::countCachedRecords(folder);
  if (context.call.json) {
    JsonWriter json{context.surroundings.out};
    json.beginObject().field("directory", folder).field("records", records).endObject().finish();
  } else {
    printLine(context,
              say(context.language(), sentences::cacheHolds,
                  counted(context.language(), records, sentences::entries), printable(folder)));
  }
  return ExitStatus::done;
}

ExitStatus resetCache(const CommandContext& context) {
  const std::string folder = requiredStateFolder(context);
  const auto removal = MetadataCache::reset(folder);
  writeLog(context.log, "metadata cache reset");
  const Language language = context.language();
  if (removal.failed > 0) {
    context.warn(say(language, sentences::cacheNotReset,
                     counted(language, removal.failed, sentences::files), printable(folder)));
  }
  if (context.call.json) {
    writeCacheReset(context.surroundings.out, removal.removed, removal.failed);
  } else if (removal.failed == 0 || removal.removed > 0) {
    printLine(context, resetText(language, removal));
  }
  return removal.failed > 0 ? ExitStatus::someFailed : ExitStatus::done;
}

}  // namespace tavrix::cli
