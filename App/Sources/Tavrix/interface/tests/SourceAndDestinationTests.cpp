#include <cerrno>

#include "foundation/tests/support/TemporaryFolder.h"
#include "interface/destination/DestinationAdvice.h"
#include "interface/destination/LastRuns.h"
#include "interface/list/CardText.h"
#include "interface/session/WindowSession.h"
#include "interface/source/WaitingFacts.h"
#include "model/tests/support/ModelHarness.h"
#include "services/HistoryFolder.h"

namespace tavrix::window {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using Tone = DestinationAdvice::Tone;

AppState stateWith(DestinationState destination, std::uint64_t newBytes = 5'000'000) {
  AppState state;
  state.destination = "/photos";
  state.destinationState = std::move(destination);
  state.newFilesCount = 21;
  state.newBytes = newBytes;
  return state;
}

TEST(DestinationAdvice, everyState_isSaidBeforeThePress) {
  namespace state = destination_state;
  const auto advice = [](DestinationState destination) {
    return adviceOf(Language::russian, stateWith(std::move(destination)), "ru_RU");
  };
  EXPECT_EQ(advice(state::Ready{8'000'000}).status, "После переноса останется 3,0\u00A0МБ");
  EXPECT_EQ(advice(state::Ready{8'000'000}).button, "Перенести 21 файл");
  EXPECT_EQ(advice(state::Ready{1'000'000}).tone, Tone::warning);
  EXPECT_THAT(advice(state::Ready{1'000'000}).status, HasSubstr("Нужно 5,0\u00A0МБ"));
  EXPECT_EQ(advice(state::Ready{Folder::unknownFreeBytes}).status, "");
  EXPECT_EQ(advice(state::Ready{Folder::unknownFreeBytes}).button, "Перенести 21 файл");
  EXPECT_EQ(advice(state::Missing{}).tone, Tone::quiet);
  EXPECT_EQ(advice(state::Busy{}).tone, Tone::warning);
  const auto refused = advice(
      state::Refused{std::make_exception_ptr(FileError{FileOperation::write, "/photos", EACCES})});
  EXPECT_EQ(refused.tone, Tone::bad);
  EXPECT_THAT(refused.status, HasSubstr("/photos"));
}

TEST(DestinationAdvice, archives_needRoomBesideTheirFiles) {
  AppState state = stateWith(destination_state::Ready{8'000'000});
  Settings settings = *state.settings;
  settings.layout.packAsZip = true;
  state.settings = settings;
  EXPECT_EQ(neededBytes(state), 10'000'000U);
  EXPECT_EQ(adviceOf(Language::russian, state, "ru_RU").tone, Tone::warning);
}

struct LookingAhead : ModelHarness {
  LookingAhead() {
    looksAhead = true;
    launch();
  }
};

TEST(LookingAhead, copiesUnderOtherNames_areFoundBeforeThePress) {
  LookingAhead harness;
  harness.makeReady();
  harness.model->startTransfer();
  harness.settle();
  harness.model->leaveSummary();
  Settings settings = *harness.state().settings;
  settings.layout.fileNamePrefixMode = FileNamePrefixMode::custom;
  settings.layout.customFileNamePrefix = "trip ";
  harness.model->changeSettings(settings);
  harness.settle();
  EXPECT_EQ(harness.state().findings->again.files, 12U);
  const auto advice = adviceOf(Language::russian, harness.state(), "ru_RU");
  EXPECT_THAT(advice.warnings,
              ElementsAre(AllOf(HasSubstr("12 файлов"), EndsWith(": префикс имён файлов."))));
  harness.model->changeSettings(*advice.keepingNames);
  harness.settle();
  EXPECT_EQ(harness.state().findings->again.files, 0U);
  EXPECT_EQ(adviceOf(Language::russian, harness.state(), "ru_RU").keepingNames, std::nullopt);
  harness.model->changeSettings(settings);
  harness.settle();
  harness.model->includeNone();
  harness.settle();
  EXPECT_THAT(adviceOf(Language::russian, harness.state(), "ru_RU").warnings, IsEmpty());
}

TEST(LookingAhead, folderThatCannotBeMade_isRefusedAtOnce) {
  LookingAhead harness;
  harness.plug();
  harness.model->setDestination(harness.destination / "none/there");
  harness.settle();
  EXPECT_EQ(adviceOf(Language::russian, harness.state(), "ru_RU").tone, Tone::bad);
}

TEST(LastDestination, isThatOfTheSamePhoneIfItIsStillThere) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder / "photos");
  RecordingLog log;
  const auto last = [&](const std::string& phone) {
    return lastRuns(folder / "state", phone, folder / "photos", log);
  };
  EXPECT_EQ(last("hash"), LastRuns{});
  TransferRecord record;
  record.phoneHash = "hash";
  record.startedAt = Instant{std::chrono::hours{24 * 20700}};
  record.destinationPath = folder / "photos";
  std::filesystem::create_directories(folder / "state");
  HistoryFolder::create(folder / "state", log).store().add(record);
  EXPECT_EQ(last("hash"), (LastRuns{folder / "photos", record.startedAt}));
  EXPECT_EQ(last("other"), LastRuns{});
  std::filesystem::remove(folder / "photos");
  EXPECT_EQ(last("hash").destination, std::nullopt);
}

TEST(WaitingFacts, everyStateOfAPhone_hasWordsAndAWayOn) {
  using State = DeviceState;
  using Reason = State::Failed::Reason;
  const std::vector<State::Kind> kinds{
      State::Waiting{},
      State::Locked{"Anna"},
      State::Connecting{"Anna"},
      State::Connecting{"Anna", true},
      State::Enumerating{"Anna", 12, 40},
      State::ReadingMetadata{"Anna", {.total = 40, .hits = 10, .read = 2}},
      State::Stopped{"Anna", {}},
      State::Stopped{"Anna", {}, State::Stopped::Reason::phoneLeft},
      State::Failed{Reason::noService, ""},
      State::Failed{Reason::trustDenied, "Anna"},
      State::Failed{Reason::unreachable, "Anna"},
      State::Failed{Reason::silent, "Anna"},
      State::Failed{Reason::folderRefused, "Anna"}};
  std::set<std::string> screens;
  for (const Language language : {Language::russian, Language::english}) {
    for (const State::Kind& kind : kinds) {
      const WaitingFacts facts =
          waitingFacts(language, {{kind}, false, {}}, opened_source::Phone{});
      EXPECT_FALSE(facts.title.empty() || facts.text.empty()) << kind.index();
      EXPECT_TRUE(facts.isBusy || facts.steps || !facts.retry.empty()) << kind.index();
      EXPECT_EQ(facts.isFault, std::holds_alternative<State::Failed>(kind));
      screens.insert(facts.title + facts.text);
    }
  }
  EXPECT_EQ(screens.size(), 2 * kinds.size()) << "two states look the same";
  const DeviceFacts unseen{{}, true, {}};
  EXPECT_EQ(waitingFacts(Language::russian, unseen, opened_source::None{}).title,
            "iPhone подключён, но система его не передаёт");
}

TEST(WaitingFacts, folderThatCannotBeOpened_saysWhyAndOffersToTryAgain) {
  const auto error =
      std::make_exception_ptr(FileError{FileOperation::open, "/none/snapshot.json", ENOENT});
  const WaitingFacts facts =
      waitingFacts(Language::russian, {}, opened_source::Failed{"/none", error});
  EXPECT_THAT(facts.text, HasSubstr("По пути «/none» ничего нет"));
  EXPECT_EQ(facts.retry, "Повторить");
}

TEST(WindowSession, folder_isReadAgainWhenItsShotsAreDatedOtherwise) {
  TemporaryFolder folder;
  folder.write("DCIM/100APPLE/IMG-20200131-WA0001.jpg", "x");
  ManualMainLoop loop;
  WindowSession session{{.loop = loop, .now = [] { return Instant{}; }, .newID = randomUuid}};
  AppModel& model = session.model();
  model.changeSettings(withLayout(*model.state().settings, LayoutChoice::days));
  const auto folderShown = [&] {
    EXPECT_TRUE(loop.runUntil([&] {
      return std::holds_alternative<opened_source::Open>(session.source()) && model.isSettled() &&
             !model.state().displayGroups->empty();
    }));
    return model.state().displayGroups->front();
  };
  session.open(folder.path());
  const auto named = folderShown();
  EXPECT_EQ(named->id, "2020-01-31");
  EXPECT_FALSE(named->isFileDated);
  Settings settings = *model.state().settings;
  settings.gathering.datesFromNames = false;
  model.changeSettings(settings);
  loop.runDue();
  const auto dated = folderShown();
  EXPECT_NE(dated->id, "2020-01-31");
  EXPECT_TRUE(dated->isFileDated);
  EXPECT_EQ(CardText::note(Language::russian, *dated), "известны только даты файлов");
}

}  // namespace
}  // namespace tavrix::window
