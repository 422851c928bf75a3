// TextPrinter: where the dates of the shots of a folder come from.

#include <algorithm>

#include "cli/printing/TextPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/DateSourceSentences.h"

namespace tavrix::cli {
namespace {

using Shots = std::vector<const AssetBundle*>;

std::optional<DateSource> sourceOf(const AssetBundle& shot) {
  return shot.primaryPicture().dateSource();
}

/// Returns the shots whose dates are not their own, in the order of the folders.
Shots datedOtherwise(const Library& library) {
  Shots shots;
  for (const FolderNaming::Row& row : library.rows) {
    for (const AssetBundle& shot : row.group->bundles) {
      const auto source = sourceOf(shot);
      if (source && *source != DateSource::metadata) shots.push_back(&shot);
    }
  }
  return shots;
}

}  // namespace

void TextPrinter::dateSources(const Library& library) {
  const Shots shots = datedOtherwise(library);
  const auto byFile = std::count_if(shots.begin(), shots.end(), [](const AssetBundle* shot) {
    return sourceOf(*shot) == DateSource::file;
  });
  if (byFile > 0) {
    line(say(language_, sentences::onlyFileDate,
             count(static_cast<std::uint64_t>(byFile), sentences::shotsWithDate)));
  }
  if (!library.reasons || shots.empty()) return;
  line("");
  line(say(language_, sentences::datedOtherwise));
  table({{say(language_, sentences::titleShot), false, true},
         {say(language_, sentences::titleDate)},
         {say(language_, sentences::titleDateSource)}})
      .write(sink_, shots.size(), [&](std::size_t row) -> Table::Cells {
        const AssetBundle& shot = *shots[row];
        return {pathOnPhone(shot.primaryPicture()), dateText(shot.captureDate()),
                say(language_, sourceOf(shot) == DateSource::name ? sentences::sourceName
                                                                  : sentences::sourceFile)};
      });
}

}  // namespace tavrix::cli
