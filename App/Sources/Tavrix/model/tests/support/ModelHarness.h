#pragma once

#include <gmock/gmock.h>

#include <cerrno>
#include <deque>
#include <filesystem>
#include <map>
#include <mutex>

#include "foundation/tests/support/FaultyFolder.h"
#include "foundation/tests/support/ManualMainLoop.h"
#include "foundation/tests/support/RecordingLog.h"
#include "foundation/tests/support/TemporaryFolder.h"
#include "model/AppModel.h"

namespace tavrix {

/// A queue of tasks that the test runs one by one.
class ManualWorker {
 public:
  Background background() {
    return [this](std::function<void()> work) { waiting_.push_back(std::move(work)); };
  }
  bool runOne() {
    if (waiting_.empty()) return false;
    const auto work = std::move(waiting_.front());
    waiting_.pop_front();
    work();
    return true;
  }
  std::size_t waiting() const { return waiting_.size(); }

 private:
  std::deque<std::function<void()>> waiting_;
};

/// A phone whose files have distinct content, and that can be unplugged.
class FakePhone {
 public:
  /// Creates `count` files of ten bytes, three a day from 2026-05-20 on; every fourth is a video.
  explicit FakePhone(int count, std::string name = "iPhone") : name_(std::move(name)) {
    for (int i = 0; i < count; ++i) addFile(i);
  }

  /// `hour` is the hour of capture, counted from the beginning of the first day; by default it
  /// follows from the number.
  void addFile(int number, bool isOptimized = false, std::optional<int> hour = std::nullopt) {
    add(number, fmt::format("IMG_{:04}", number), isOptimized, hour);
  }
  /// Adds a file with the name of another one, in another folder of the phone.
  void addNamesake(int number, int hour) {
    add(number, fmt::format("IMG_{:04}", number), false, hour, "101APPLE");
  }
  void addEditedVersion(int number) { add(number, fmt::format("IMG_E{:04}", number), false); }
  static std::string contentOf(const MediaAsset& asset) {
    std::string content{asset.name()};
    content.resize(10, '.');
    return content;
  }

  ConnectedSource source() {
    return {.deviceName = name_,
            .phone = snapshotPhone(name_),
            .assets = assets_,
            .files = std::make_shared<Files>(*this)};
  }
  const std::vector<MediaAsset>& assets() const { return assets_; }

  bool isPlugged = true;
  /// The number of files to deliver before the phone leaves during the next one; negative: all.
  int filesUntilUnplugged = -1;
  /// The names of files that cannot be read.
  std::set<std::string> broken{};
  /// Called before each file.
  std::function<void()> beforeFile{};
  /// The catalogue read in another zone; the phone does not know it without this function.
  std::function<std::vector<MediaAsset>(const TimeZone&)> assetsIn{};

 private:
  void add(int number, const std::string& stem, bool isOptimized,
           std::optional<int> hour = std::nullopt, const std::string& folder = "100APPLE") {
    const bool isVideo = number % 4 == 3;
    const std::string name = stem + (isVideo ? ".MOV" : ".HEIC");
    const int hours = 24 * 20593 + hour.value_or(24 * (number / 3) + number % 3);
    assets_.emplace_back(folder + "/" + name, name, MediaAsset::Text{folder},
                         isVideo ? MediaKind::video : MediaKind::photo, 10U,
                         Instant{std::chrono::hours{hours}}, GeoPoint{55.75 + number / 30, 37.62},
                         isOptimized, MediaAsset::Text{}, MediaAsset::Text{});
  }
  struct Files : SourceFiles {
    explicit Files(FakePhone& owner) : phone(owner) {}
    std::unique_ptr<MediaSource> openMedia(AwaitPhone, std::stop_token) const override {
      if (!phone.isPlugged) throw SourceError{SourceError::Kind::disconnected, "DCIM"};
      return std::make_unique<Media>(phone);
    }
    std::optional<std::vector<MediaAsset>> assetsIn(const TimeZone& zone) const override {
      if (!phone.assetsIn) return std::nullopt;
      return phone.assetsIn(zone);
    }
    FakePhone& phone;
  };
  struct Media : MediaSource {
    explicit Media(FakePhone& owner) : phone(owner) {}
    void download(const MediaAsset& asset, DownloadDestination& destination) override {
      if (phone.beforeFile) phone.beforeFile();
      const std::string content = contentOf(asset);
      const auto bytes = std::as_bytes(std::span{content});
      if (phone.filesUntilUnplugged == 0) phone.isPlugged = false;
      if (!phone.isPlugged) {
        destination.append(bytes.first(4));
        throw SourceError{SourceError::Kind::disconnected, std::string{asset.name()}};
      }
      if (phone.filesUntilUnplugged > 0) --phone.filesUntilUnplugged;
      if (phone.broken.contains(std::string{asset.name()})) {
        throw SourceError{SourceError::Kind::unreadable, std::string{asset.name()}, EIO};
      }
      destination.append(bytes);
    }
    FakePhone& phone;
  };

  std::string name_;
  std::vector<MediaAsset> assets_;
};

/// A model whose surroundings are controlled by the test.
struct ModelHarness {
  explicit ModelHarness(Settings settings = dailySettings()) : initial(std::move(settings)) {
    launch();
  }
  static Settings dailySettings() {
    Settings settings;
    settings.gathering.uiMode = UIGroupingMode::byDate;
    return settings;
  }

  /// Replaces the model by a new one on the same folders.
  void launch() {
    model = nullptr;
    AppModel::Services services{.loop = loop,
                                .background = background.background(),
                                .transferring = transferring.background(),
                                .looking = looking.background(),
                                .now = [this] { return clock += std::chrono::seconds{1}; },
                                .newID = [] { return randomUuid(); },
                                .log = &log,
                                .language = Language::russian,
                                .systemLocaleID = "ru_RU"};
    services.defaults = defaults;
    services.converter = converter;
    services.storing = storing.background();
    services.isDemo = isDemo;
    services.stateFolder = stateFolder;
    services.keepsGroupsDebug = keepsGroupsDebug;
    services.looksAhead = looksAhead;
    services.failureText = [](const std::exception_ptr&) { return "почему-то"; };
    services.keepRecord = [this](const TransferRecord& record) {
      if (!keepsRecords) return false;
      records.insert_or_assign(record.id, record);
      return true;
    };
    services.destinations.openForWriting = opening(Destination::openForWriting);
    services.destinations.openRequiredForWriting = opening(Destination::openRequiredForWriting);
    services.destinations.openExisting = opening(Destination::openExisting);
    services.destinations.isVolumeAway = [this](const std::string&, const FolderIdentity&) {
      return isVolumeDetached;
    };
    model = std::make_unique<AppModel>(std::move(services), initial);
  }
  OpenFolder opening(OpenFolder open) {
    return [this, open = std::move(open)](const std::string& path) -> std::unique_ptr<Folder> {
      auto folder = open(path);
      if (!folder) return nullptr;
      return faulty(std::move(folder));
    };
  }
  std::unique_ptr<Folder> faulty(std::unique_ptr<Folder> folder) {
    auto wrapped = std::make_unique<FaultyFolder>(std::move(folder));
    wrapped->faults().rule = [this](FileOperation operation, const std::string& path) {
      if (operation != FileOperation::write || path.starts_with("phone-")) return;
      if (writesUntilFull == 0) {
        if (whenFull) std::exchange(whenFull, nullptr)();
        throw FileError{operation, path, fullCode};
      }
      if (writesUntilFull > 0) --writesUntilFull;
    };
    wrapped->faults().freeBytes = [this]() -> std::uint64_t {
      return writesUntilFull == 0 ? freeWhenFull : 1'000'000;
    };
    return wrapped;
  }

  void plug() { model->sourceReady(phone.source(), data_origin::Device{"iPhone"}); }
  /// Runs everything that needs no time to pass.
  void settle() {
    while (loop.runOne() || background.runOne() || transferring.runOne() || looking.runOne() ||
           storing.runOne()) {
    }
  }
  /// Plugs in the phone, sets the destination and computes everything.
  void makeReady() {
    plug();
    model->setDestination(destination.path());
    settle();
  }

  const AppState& state() const { return model->state(); }
  bool isBrowsing() const { return std::holds_alternative<app_phase::Browse>(state().phase); }
  bool isTransferring() const {
    return std::holds_alternative<app_phase::Transferring>(state().phase);
  }
  const TransferReport& report() const { return *std::get<app_phase::Done>(state().phase).report; }
  const TransferRecord& record() const { return records.at(state().lastRecordID.value()); }

  /// Returns the content of the pictures at the destination by path.
  std::map<std::string, std::string> filesOnDisk() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{destination.path()}) {
      const std::string path = std::filesystem::relative(entry.path(), destination.path()).string();
      if (!entry.is_regular_file() || path.starts_with("phone-")) continue;
      files.emplace(path, destination.read(path));
    }
    return files;
  }

  Settings initial;
  TemporaryFolder destination;
  FakePhone phone{12};
  ManualMainLoop loop;
  ManualWorker background;
  ManualWorker transferring;
  ManualWorker looking;
  ManualWorker storing;
  UserDefaults* defaults = nullptr;
  MediaConverter* converter = nullptr;
  bool isDemo = false;
  std::optional<std::string> stateFolder{};
  bool keepsGroupsDebug = false;
  bool looksAhead = false;
  RecordingLog log;
  Instant clock{std::chrono::hours{24 * 20700}};
  std::map<Uuid, TransferRecord> records;
  bool keepsRecords = true;
  int writesUntilFull = -1;          ///< negative: unlimited space
  std::function<void()> whenFull{};  ///< called once, before the first write that fails
  std::uint64_t freeWhenFull = 3;
  int fullCode = ENOSPC;          ///< the error of a write without space
  bool isVolumeDetached = false;  ///< the volume on which the run began is not there
  std::unique_ptr<AppModel> model;
};

}  // namespace tavrix
