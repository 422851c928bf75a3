#include "text/DeviceText.h"

#include <gmock/gmock.h>

#include <set>

namespace tavrix {
namespace {

using State = DeviceState;
using Reason = State::Failed::Reason;

TEST(DeviceText, everyStateHasItsOwnSentence) {
  const std::vector<State::Kind> kinds{
      State::Waiting{},
      State::Locked{"Аня"},
      State::Connecting{"Аня"},
      State::Connecting{"Аня", true},
      State::Enumerating{"Аня", 22, std::nullopt},
      State::Enumerating{"Аня", 22, 40},
      State::ReadingMetadata{"Аня", {40, 10, 12}},
      State::Stopped{"Аня", {}, State::Stopped::Reason::asked},
      State::Stopped{"Аня", {}, State::Stopped::Reason::phoneLeft},
      State::Ready{},
      State::Failed{Reason::noService, ""},
      State::Failed{Reason::trustDenied, "Аня"},
      State::Failed{Reason::unreachable, "Аня"},
      State::Failed{Reason::silent, "Аня"},
      State::Failed{Reason::folderRefused, "Аня"},
  };
  for (const Language language : {Language::russian, Language::english}) {
    std::set<std::string> texts{unseenPhoneText(language)};
    for (const auto& kind : kinds) texts.insert(deviceText(language, {kind}));
    EXPECT_EQ(texts.size(), kinds.size() + 1);
  }
  const auto russian = [](const State::Kind& kind) {
    return deviceText(Language::russian, {kind});
  };
  EXPECT_EQ(russian(kinds[5]), "Получаю список файлов iPhone «Аня»: 22 файла; в прошлый раз — 40");
  EXPECT_EQ(russian(kinds[6]), "Читаю сведения о файлах iPhone «Аня»: 22 / 40");
  EXPECT_EQ(russian(kinds[8]), "iPhone отключён. Подключите кабель — продолжу сам.");
  EXPECT_EQ(russian(State::Locked{"a\nb"}).find('\n'), std::string::npos);
  EXPECT_EQ(unseenPhoneText(Language::russian),
            isMac ? "iPhone подключён, но macOS его не передаёт"
                  : "iPhone подключён, но система его не передаёт");
}

}  // namespace
}  // namespace tavrix
