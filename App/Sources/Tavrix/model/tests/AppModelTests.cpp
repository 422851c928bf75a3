// The display of the model and how it follows the choices.

#include "media/PlaceLookup.h"
#include "model/Narrowing.h"
#include "model/tests/support/ModelHarness.h"

namespace tavrix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<std::string> idsOf(const DisplayGroups& groups) {
  std::vector<std::string> ids;
  for (const auto& group : *groups) ids.push_back(group->id);
  return ids;
}

struct AppModelTest : testing::Test, ModelHarness {};

TEST(LayoutChoice, everyLayout_isFoundAgainInTheSettings) {
  using enum LayoutChoice;
  for (const LayoutChoice layout : {days, months, years, events, trips}) {
    EXPECT_EQ(layoutOf(withLayout({}, layout)), layout);
  }
  Settings flat;
  flat.gathering.uiMode = UIGroupingMode::flat;
  EXPECT_EQ(layoutOf(flat), std::nullopt);
}

TEST_F(AppModelTest, phoneThatIsReady_showsItsFoldersAndWhatIsNew) {
  makeReady();
  EXPECT_EQ(state().origin, DataOrigin{data_origin::Device{"iPhone"}});
  EXPECT_THAT(idsOf(state().displayGroups),
              ElementsAre("2026-05-20", "2026-05-21", "2026-05-22", "2026-05-23"));
  EXPECT_EQ(state().visibleGroups, state().displayGroups);
  EXPECT_EQ(state().newFilesCount, 12);
  EXPECT_EQ(state().newBytes, 120);
  EXPECT_EQ(state().knownFilesCount, 0);
  EXPECT_EQ(inclusion(state()), InclusionState::all);
  const DisplayGroup& first = *state().displayGroups->front();
  EXPECT_EQ(first.counts.photos, 3);
  EXPECT_EQ(first.newCount, 3);
  EXPECT_THAT(previewAssets(first), SizeIs(3));
  EXPECT_EQ(first.faces->otherShots, 0);
  EXPECT_TRUE(log.has("device ready: assets=12"));
}

TEST_F(AppModelTest, phoneThatLeaves_clearsTheScreen) {
  makeReady();
  model->toggleGroup("2026-05-20");
  model->search("2026");
  settle();
  EXPECT_THAT(*state().searchSuggestions, testing::Not(IsEmpty()));
  plug();  // with a grouping under way
  model->sourceGone();
  settle();
  EXPECT_EQ(state().origin, DataOrigin{});
  EXPECT_THAT(*state().assets, IsEmpty());
  EXPECT_THAT(*state().displayGroups, IsEmpty());
  EXPECT_THAT(*state().visibleGroups, IsEmpty());
  EXPECT_EQ(*state().navOutline, NavOutline{});
  EXPECT_THAT(*state().searchSuggestions, IsEmpty());
  EXPECT_THAT(model->selectedKeys(), IsEmpty());
  EXPECT_EQ(state().newFilesCount, 0);
  EXPECT_TRUE(log.has("device gone: cleared stale catalog"));
  model->search("");
  plug();
  settle();
  EXPECT_THAT(*state().displayGroups, SizeIs(4));
}

TEST_F(AppModelTest, snapshot_staysWhateverPhonesDo) {
  model->sourceReady(phone.source(), data_origin::Snapshot{});
  settle();
  model->sourceGone();
  settle();
  EXPECT_THAT(*state().displayGroups, SizeIs(4));
  EXPECT_TRUE(model->hasSource());
}

TEST_F(AppModelTest, zone_datesAnewWhatTellsNoOffset) {
  phone.assetsIn = [this](const TimeZone& zone) {
    std::vector<MediaAsset> assets;
    for (const MediaAsset& asset : phone.assets()) {
      const LocalTime wallClock = TimeZone::utc().toLocal(*asset.captureDate());
      assets.emplace_back(asset.id(), asset.name(), MediaAsset::Text{"100APPLE"}, asset.kind(),
                          asset.sizeBytes(), zone.toInstant(wallClock), asset.location(), false,
                          MediaAsset::Text{}, MediaAsset::Text{});
    }
    return assets;
  };
  model->sourceReady(phone.source(), data_origin::Device{"iPhone"});
  settle();
  const auto before = idsOf(state().displayGroups);
  Settings settings = *state().settings;
  settings.gathering.timeZone = TimeZone::load("Asia/Tokyo").value();
  model->changeSettings(settings);
  EXPECT_FALSE(model->isSettled());
  settle();
  EXPECT_EQ(idsOf(state().displayGroups), before) << "the wall clock told the day";
  EXPECT_NE(*state().assets, phone.assets());
  settings.gathering.timeZone = TimeZone::utc();
  model->changeSettings(settings);
  settle();
  EXPECT_EQ(idsOf(state().displayGroups), before);
  EXPECT_EQ(state().assets->front().captureDate(), phone.assets().front().captureDate());
}

TEST_F(AppModelTest, check_takesTheFolderOutOfThePlanAndBackIn) {
  makeReady();
  model->toggleGroup("2026-05-21");
  EXPECT_FALSE(isIncluded(state(), *(*state().displayGroups)[1]));
  EXPECT_EQ(state().newFilesCount, 9) << "at once, before anything is computed";
  settle();
  EXPECT_EQ(state().newFilesCount, 9);
  EXPECT_EQ(inclusion(state()), InclusionState::some);
  model->toggleGroup("2026-05-21");
  settle();
  EXPECT_EQ(state().newFilesCount, 12);
  model->includeNone();
  settle();
  EXPECT_EQ(state().newFilesCount, 0);
  EXPECT_EQ(inclusion(state()), InclusionState::none);
  model->includeAll();
  settle();
  EXPECT_EQ(state().newFilesCount, 12);
  EXPECT_EQ(inclusion(state()), InclusionState::all);
}

TEST_F(AppModelTest, narrowing_countsWhatIsShownAlone) {
  phone.addFile(40);  // 2 June
  makeReady();
  const NavOutline& outline = *state().navOutline;
  ASSERT_THAT(outline.years, SizeIs(1));
  EXPECT_THAT(outline.years[0].months,
              ElementsAre(NavOutline::Month{2026, 6, 1}, NavOutline::Month{2026, 5, 12}));
  EXPECT_EQ(outline.noPlaceCount, 13);
  EXPECT_EQ(outline.total, 13);

  model->navigate(nav_selection::Month{2026, 6});
  settle();
  EXPECT_THAT(idsOf(state().visibleGroups), ElementsAre("2026-06-02"));
  EXPECT_THAT(*state().displayGroups, SizeIs(5));
  EXPECT_EQ(state().newFilesCount, 1);
  model->toggleGroup("2026-06-02");
  settle();
  EXPECT_EQ(state().newFilesCount, 0);

  model->toggleGroup("2026-05-20");
  settle();
  EXPECT_THAT(model->excludedKeys(), ElementsAre("2026-06-02")) << "a hidden folder is left alone";
  model->includeAll();
  model->includeNone();
  model->navigate(nav_selection::NoPlace{});
  settle();
  EXPECT_THAT(*state().visibleGroups, SizeIs(5));
  EXPECT_EQ(state().newFilesCount, 12) << "the hidden folders kept their check marks";
  model->navigate(nav_selection::Year{2025});
  settle();
  EXPECT_THAT(*state().visibleGroups, IsEmpty());

  model->navigate(nav_selection::All{});
  model->search("  МАЙ 2026 ");
  settle();
  EXPECT_THAT(*state().visibleGroups, SizeIs(4));
  EXPECT_THAT(*state().searchSuggestions,
              ElementsAre(SearchSuggestion{SearchSuggestion::Kind::month, "Май 2026", 12}));
  model->search("нет такого");
  settle();
  EXPECT_THAT(*state().visibleGroups, IsEmpty());
  EXPECT_EQ(state().newFilesCount, 0);
}

TEST_F(AppModelTest, folder_isFoundByTheNamesOfItsPlaces) {
  struct OneCity : PlaceLookup {
    std::string placeKey(const GeoPoint&) const override { return "cell"; }
    std::optional<PlaceNames> names(const std::string&, const std::string&) const override {
      PlaceNames names;
      names.city = "Коломна";
      return names;
    }
  };
  const auto library =
      std::make_shared<const Library>(makeLibrary(phone.assets(), initial, "ru_RU"));
  const LibraryFacts facts =
      makeFacts(library, {initial, "ru_RU", std::make_shared<OneCity>(), "ru_RU"});
  EXPECT_THAT(facts.outline.places, ElementsAre(NavOutline::Place{"Коломна", 12}));
  const auto finds = [&](const char* text) {
    return Narrowing{nav_selection::All{}, text}.shows(facts.groups.front());
  };
  EXPECT_TRUE(finds("КОЛОМ"));
  EXPECT_FALSE(finds("Рязань"));
}

TEST_F(AppModelTest, foldersThatStay_areTheSameObjects) {
  makeReady();
  const auto before = *state().displayGroups;
  model->toggleGroup("2026-05-22");
  settle();
  const auto after = *state().displayGroups;
  for (const std::size_t i : {0U, 1U, 3U}) EXPECT_TRUE(isSame(before[i], after[i])) << i;
  Settings settings = *state().settings;
  settings.naming.nameOverrides["2026-05-20"] = "Дача";
  model->changeSettings(settings);
  settle();
  EXPECT_EQ((*state().displayGroups)[0]->folderName, "Дача");
  EXPECT_TRUE(isSame(after[1], (*state().displayGroups)[1]));
}

TEST_F(AppModelTest, suggestedMerge_isGoneOnceItIsMadeOrRejected) {
  // More days at home, then two stays in one place with an outing between them.
  for (const auto& [number, day] :
       {std::pair{24, 5}, {25, 6}, {26, 7}, {60, 10}, {61, 11}, {90, 12}, {62, 13}, {64, 14}}) {
    phone.addFile(number, false, 24 * day);
  }
  makeReady();
  model->changeSettings(withLayout(*state().settings, LayoutChoice::trips));
  settle();
  ASSERT_THAT(*state().mergeSuggestions, SizeIs(1));
  const auto ids = state().mergeSuggestions->front().groupIDs;
  EXPECT_THAT(ids, SizeIs(3));
  model->mergeGroups(ids);
  settle();
  EXPECT_THAT(*state().mergeSuggestions, IsEmpty());
  const std::string merged = GroupMerging::mergedID(ids);
  EXPECT_THAT(idsOf(state().displayGroups), testing::Contains(merged));
  model->unmergeGroup(merged);
  settle();
  EXPECT_THAT(*state().mergeSuggestions, SizeIs(1));
  model->rejectSuggestion(ids);
  settle();
  EXPECT_THAT(*state().mergeSuggestions, IsEmpty());
}

TEST_F(AppModelTest, mergeAndRename_standUntilTheyAreTakenBack) {
  makeReady();
  model->mergeGroups({"2026-05-21", "2026-05-20"});
  settle();
  const std::string merged = "merge:2026-05-20+2026-05-21";
  EXPECT_THAT(idsOf(state().displayGroups), ElementsAre(merged, "2026-05-22", "2026-05-23"));
  EXPECT_EQ(highlightedGroupID(state()), merged);
  model->renameGroup(merged, "Два дня");
  settle();
  EXPECT_EQ(state().displayGroups->front()->folderName, "Два дня");

  model->changeSettings(withLayout(*state().settings, LayoutChoice::months));
  settle();
  EXPECT_THAT(*state().displayGroups, SizeIs(1)) << "merges are those of their mode";
  model->changeSettings(withLayout(*state().settings, LayoutChoice::days));
  settle();
  EXPECT_EQ(state().displayGroups->front()->folderName, "Два дня");
  model->unmergeGroup(merged);
  model->renameGroup(merged, "");
  settle();
  EXPECT_THAT(*state().displayGroups, SizeIs(4));
  EXPECT_TRUE(state().settings->naming.nameOverrides.empty());
}

TEST_F(AppModelTest, stormOfChanges_isServedByOneMorePassAndNeverOutOfDate) {
  makeReady();
  std::size_t seen = 0;
  const auto subscription = model->subscribe([&](const StateChange& change) {
    if (!change.has(StateTopic::rows)) return;
    ++seen;
    for (const auto& group : *change.after.displayGroups) {
      EXPECT_EQ(group->folderName, "Имя 999") << "of the last change alone";
    }
  });
  Settings settings = *state().settings;
  settings.gathering.uiMode = UIGroupingMode::byDate;
  settings.gathering.granularity = UIGranularity::year;
  for (int i = 0; i < 1000; ++i) {
    settings.naming.nameOverrides["2026"] = fmt::format("Имя {}", i);
    model->changeSettings(settings);
    if (i % 10 == 0) background.runOne();
    EXPECT_LE(background.waiting(), 3U);
  }
  settle();
  EXPECT_EQ(seen, 1);
  EXPECT_EQ(state().displayGroups->front()->folderName, "Имя 999");
}

TEST_F(AppModelTest, optimizedCopies_areCountedWhetherOrNotTheyAreSkipped) {
  phone.addFile(13, true);
  phone.addEditedVersion(13);
  makeReady();
  EXPECT_EQ(state().optimizedCount, 1);
  EXPECT_EQ(state().navOutline->total, 14) << "files, not shots";
  Settings settings = *state().settings;
  settings.content.editedPolicy = BundleFilter::EditedPolicy::editedOnly;
  model->changeSettings(settings);
  settle();
  EXPECT_EQ(state().optimizedCount, 1) << "the shot is one, whatever of it is copied";
  settings.content.skipOptimized = true;
  model->changeSettings(settings);
  settle();
  EXPECT_EQ(state().optimizedCount, 1) << "the count is the explanation of what is missing";
  EXPECT_EQ(state().newFilesCount, 12);
  model->includeNone();
  settle();
  EXPECT_EQ(state().optimizedCount, 0) << "nothing is checked";
  model->includeAll();
  settle();
  EXPECT_EQ(state().optimizedCount, 1);
  model->includeNone();
  settle();
  settings.content.skipOptimized = false;
  model->changeSettings(settings);
  model->includeNone();
  settle();
  model->includeNone();
  settle();
  EXPECT_EQ(state().optimizedCount, 0);
  model->includeAll();
  settle();
  EXPECT_EQ(state().optimizedCount, 1);
  model->toggleGroup("2026-05-24");
  settings.content.skipOptimized = true;
  model->changeSettings(settings);
  settle();
  EXPECT_EQ(state().optimizedCount, 0) << "its folder is unchecked, though it is not shown now";
}

}  // namespace
}  // namespace tavrix
