// The commands that show and reset the metadata cache and the kept thumbnails.

#include "cli/commands/Commands.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/ThumbnailSentences.h"
#include "cli/sessions/CommandContext.h"
#include "cli/sessions/Source.h"
#include "device/metadata/MetadataCache.h"
#include "device/thumbnails/ThumbnailCache.h"
#include "foundation/Text.h"
#include "foundation/json/JsonWriter.h"
#include "text/SourceSentences.h"

namespace tavrix::cli {
namespace {

void printLine(const CommandContext& context, const std::string& line) {
  context.surroundings.out.write(line + '\n');
}

std::string filesText(const CommandContext& context, std::uint64_t count) {
  return counted(context.language(), count, sentences::files);
}

std::optional<std::string> thumbnailFolder(const CommandContext& context) {
  return thumbnailFolderOf(context.surroundings.environment, context.call.stateFolder);
}

void warnNotReset(const CommandContext& context, std::uint64_t failed, const std::string& folder) {
  if (failed == 0) return;
  context.warn(say(context.language(), sentences::cacheNotReset, filesText(context, failed),
                   printable(folder)));
}

void printReset(const CommandContext& context, const MetadataCache::Removal& metadata,
                const ThumbnailCache::Removal& thumbnails) {
  const Language language = context.language();
  if (metadata.removed > 0) {
    printLine(context, say(language, sentences::cacheReset, filesText(context, metadata.removed)));
  }
  if (thumbnails.removed > 0) {
    printLine(context,
              say(language, sentences::thumbnailsReset, filesText(context, thumbnails.removed)));
  }
  const bool isNothing =
      metadata == MetadataCache::Removal{} && thumbnails == ThumbnailCache::Removal{};
  if (isNothing) printLine(context, say(language, sentences::cacheWasEmpty));
}

}  // namespace

ExitStatus showCache(const CommandContext& context) {
  const std::string folder = requiredStateFolder(context);
  const auto pictures = thumbnailFolder(context);
  const std::uint64_t records = MetadataCache::countCachedRecords(folder);
  const auto thumbnails =
      pictures ? ThumbnailCache::contents(*pictures) : ThumbnailCache::Contents{};
  if (context.call.json) {
    JsonWriter json{context.surroundings.out};
    json.beginObject().field("directory", folder).field("records", records);
    json.field("thumbnailBytes", thumbnails.bytes).field("thumbnailDirectory", pictures);
    json.field("thumbnailFiles", thumbnails.files).endObject().finish();
    return ExitStatus::done;
  }
  const Language language = context.language();
  printLine(context, say(language, sentences::cacheHolds,
                         counted(language, records, sentences::entries), printable(folder)));
  if (thumbnails.files > 0) {
    printLine(context,
              say(language, sentences::thumbnailsKept, filesText(context, thumbnails.files),
                  bytesText(language, thumbnails.bytes), printable(*pictures)));
  }
  return ExitStatus::done;
}

ExitStatus resetCache(const CommandContext& context) {
  const std::string folder = requiredStateFolder(context);
  const auto pictures = thumbnailFolder(context);
  const auto metadata = MetadataCache::reset(folder);
  const auto thumbnails = pictures ? ThumbnailCache::reset(*pictures) : ThumbnailCache::Removal{};
  writeLog(context.log, "metadata cache and thumbnails reset");
  warnNotReset(context, metadata.failed, folder);
  warnNotReset(context, thumbnails.failed, pictures.value_or(""));
  if (context.call.json) {
    JsonWriter json{context.surroundings.out};
    json.beginObject().field("failed", metadata.failed).field("removed", metadata.removed);
    json.field("thumbnailsFailed", thumbnails.failed);
    json.field("thumbnailsRemoved", thumbnails.removed).endObject().finish();
  } else {
    printReset(context, metadata, thumbnails);
  }
  return metadata.failed + thumbnails.failed > 0 ? ExitStatus::someFailed : ExitStatus::done;
}

}  // namespace tavrix::cli
