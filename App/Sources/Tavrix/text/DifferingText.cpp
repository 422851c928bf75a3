#include "text/DifferingText.h"

#include <array>

#include "foundation/Sentences.h"
#include "text/DifferingSentences.h"
#include "text/SentenceParts.h"

namespace tavrix {
namespace {

using Kind = DifferingFile::Kind;

const Sentence<std::string_view>& sentenceOf(Kind kind) {
  constexpr std::array all{&sentences::differDamaged, &sentences::differChanged,
                           &sentences::differForeign, &sentences::differEmptied};
  return *all.at(static_cast<std::size_t>(kind));
}

}  // namespace

std::vector<std::string> differingTexts(Language language, const DifferingCounts& counts) {
  std::vector<std::string> texts;
  for (const Kind kind : {Kind::emptied, Kind::damaged, Kind::changed, Kind::foreign}) {
    const auto& [files, firstPath] = counts.of(kind);
    if (files == 0) continue;
    const auto& named = files == 1 ? sentences::onlyFile : sentences::firstOfFiles;
    texts.push_back(say(
        language, sentenceOf(kind),
        say(language, named, counted(language, files, sentences::files), forSentence(firstPath))));
  }
  return texts;
}

std::string differenceText(Language language, Kind kind) {
  constexpr std::array all{&sentences::fileDamaged, &sentences::fileChanged,
                           &sentences::fileForeign, &sentences::fileEmptied};
  return say(language, *all.at(static_cast<std::size_t>(kind)));
}

}  // namespace tavrix
