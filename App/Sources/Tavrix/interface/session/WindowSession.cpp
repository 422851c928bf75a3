#include "interface/session/WindowSession.h"

#include <cmath>

#include "foundation/files/FileError.h"
#include "media/Snapshot.h"
#include "places/Gazetteer.h"
#include "services/FailureText.h"
#include "services/HistoryFolder.h"
#include "settings/PersistedSettings.h"
#include "settings/StateFolder.h"
#include "sources/KeptCatalogCounts.h"

namespace tavrix::window {
namespace {

std::unique_ptr<Folder> openCacheFolder(const std::optional<std::string>& stateFolder, Log& log) {
  if (!stateFolder) return nullptr;
  try {
    return openStateFolder(*stateFolder, "");
  } catch (const FileError& error) {
    writeLog(log, "place names not kept: path={}, code={}", PrivateField{error.path()},
             error.code());
    return nullptr;
  }
}

PersistedSettings::Values valuesAtLaunch(const WindowSurroundings& surroundings) {
  const TimeZone zone = TimeZone::load(surroundings.systemTimeZoneID).value_or(TimeZone::utc());
  PersistedSettings::Values values{initialSettings(zone, surroundings.systemLocaleID), {}};
  if (surroundings.defaults == nullptr) return values;
  PersistedSettings::forgetAtLaunch(*surroundings.defaults, isDemo(surroundings.environment));
  return PersistedSettings::read(*surroundings.defaults, std::move(values));
}

}  // namespace

WindowSession::WindowSession(WindowSurroundings surroundings)
    : surroundings_(std::move(surroundings)),
      stateFolder_(stateFolderOf(surroundings_.environment, std::nullopt)),
      naming_(openPlaceNaming()),
      host_(surroundings_.conversionProgram) {
  PersistedSettings::Values values = valuesAtLaunch(surroundings_);
  model_.emplace(services(), std::move(values.settings));
  if (!values.savedPresets.empty()) model_->changeSavedPresets(std::move(values.savedPresets));
  subscription_ = model_->subscribe([this](const StateChange& change) {
    if (change.has(StateTopic::settings)) followDating();
  });
}

WindowSession::~WindowSession() { stop_.request_stop(); }

AppModel::Services WindowSession::services() {
  AppModel::Services services =
      host_.services(surroundings_.loop, surroundings_.now, surroundings_.newID);
  services.log = surroundings_.log;
  services.language = surroundings_.language;
  services.writtenLanguage = surroundings_.language;
  services.systemLocaleID = surroundings_.systemLocaleID;
  services.placeNaming = naming_.get();
  services.stateFolder = stateFolder_;
  services.looksAhead = true;
  services.wantsReasons = true;
  services.failureText = [language = surroundings_.language](const std::exception_ptr& error) {
    return failureText(language, {}, error).value_or("");
  };
  services.keepsGroupsDebug = keepsGroupsDebug(surroundings_.environment);
  services.isDemo = isDemo(surroundings_.environment);
  services.defaults = surroundings_.defaults;
  services.destinations = surroundings_.destinations;
  services.storing = [this](std::function<void()> work) { storing_.post(std::move(work)); };
  services.keepRecord = [this](TransferRecord record) { return keepRecord(std::move(record)); };
  return services;
}

std::unique_ptr<PlaceNaming> WindowSession::openPlaceNaming() {
  if (!surroundings_.gazetteerPath) return nullptr;
  Log& log = *surroundings_.log;
  try {
    auto gazetteer = Gazetteer::open(*surroundings_.gazetteerPath);
    return std::make_unique<PlaceNaming>(std::move(gazetteer), openCacheFolder(stateFolder_, log),
                                         log);
  } catch (const FileError& error) {
    writeLog(log, "no place names: path={}, code={}", PrivateField{error.path()}, error.code());
  } catch (const GazetteerError& error) {
    writeLog(log, "no place names: damaged at {}", error.offset());
  }
  return nullptr;
}

bool WindowSession::keepRecord(TransferRecord record) {
  if (!stateFolder_) return false;
  record.destinationPath = absolutePath(record.destinationPath);
  try {
    HistoryFolder::create(*stateFolder_, *surroundings_.log).store().add(record);
    return true;
  } catch (const FileError& error) {
    writeLog(*surroundings_.log, "history: the record was not written: path={}, code={}",
             PrivateField{error.path()}, error.code());
    return false;
  }
}

void WindowSession::open(const std::string& source) {
  if (!std::holds_alternative<app_phase::Browse>(model_->state().phase)) return;
  stop_.request_stop();
  stop_ = {};
  ++readingNumber_;
  // Also before the watcher goes, which the files of a phone refer to.
  model_->closeSource();
  if (isPhone(source)) {
    followPhones(wantedNumber(source));
  } else {
    followed_.reset();
    watcher_.reset();
    readFolder(source);
  }
}

void WindowSession::followPhones(const std::string& wanted) {
  show(opened_source::Phone{});
  if (surroundings_.phones == nullptr) return;
  if (watcher_) return watcher_->setWanted(wanted);
  if (surroundings_.defaults != nullptr && !counts_) {
    counts_ = std::make_unique<KeptCatalogCounts>(*surroundings_.defaults,
                                                  isDemo(surroundings_.environment));
  }
  watcher_.emplace(DeviceWatcher::Setup{.browser = *surroundings_.phones,
                                        .loop = surroundings_.loop,
                                        .bus = surroundings_.bus,
                                        .counts = counts_.get(),
                                        .cacheDirectory = stateFolder_,
                                        .zone = model_->state().settings->gathering.timeZone,
                                        .now = surroundings_.now,
                                        .log = surroundings_.log,
                                        .wanted = wanted});
  followed_.emplace(FollowedDevice::Setup{*model_, *watcher_, *surroundings_.phones,
                                          variable(surroundings_.environment, "DEMO_DEVICE_NAME")});
  watcher_->start();
}

WindowSession::Dating WindowSession::dating() const {
  const Settings::Gathering& gathering = model_->state().settings->gathering;
  return {gathering.timeZone, gathering.datesFromNames};
}

void WindowSession::followDating() {
  if (dating() == dating_) return;
  const auto* const folder = std::get_if<opened_source::Open>(&source_);
  const auto* const reading = std::get_if<opened_source::Reading>(&source_);
  if (folder != nullptr) open(std::string{folder->path});
  if (reading != nullptr) open(std::string{reading->path});
}

void WindowSession::readFolder(const std::string& path) {
  dating_ = dating();
  show(opened_source::Reading{path});
  const std::uint64_t number = readingNumber_;
  const std::weak_ptr<const bool> life = life_;
  const auto onLoop = [this, life, number](const auto& task) {
    surroundings_.loop.post([this, life, number, task] {
      if (life.lock() && number == readingNumber_) task();
    });
  };
  ReadingSetup setup{.zone = model_->state().settings->gathering.timeZone,
                     .cacheDirectory = stateFolder_,
                     .now = surroundings_.now,
                     .log = surroundings_.log,
                     .stop = stop_.get_token()};
  setup.progress = [this, onLoop, path](const MetadataPass::Progress& progress) {
    onLoop([this, path, progress] { show(opened_source::Reading{path, progress}); });
  };
  const auto givenName = variable(surroundings_.environment, "DEMO_DEVICE_NAME");
  const auto gathering = model_->state().settings->gathering;
  reading_.post([this, onLoop, setup, path, givenName, gathering] {
    try {
      const auto opened = openPictureSource(path, nullptr);
      const FolderCatalogue catalogue = opened->readCatalogue(setup);
      if (!catalogue.isComplete) {
        return onLoop([this, path, progress = catalogue.progress] {
          show(opened_source::Stopped{path, progress});
        });
      }
      auto source = std::make_shared<ConnectedSource>(connectedSource(
          *opened,
          Snapshot::assetsOf(catalogue.items, setup.zone, opened->datesFromNames(gathering)),
          setup.zone, catalogue.unreadFolders(), givenName));
      onLoop([this, path, source] {
        model_->sourceReady(std::move(*source), data_origin::Snapshot{});
        show(opened_source::Open{path});
      });
    } catch (...) {
      onLoop([this, path, error = std::current_exception()] {
        show(opened_source::Failed{path, error});
      });
    }
  });
}

void WindowSession::stopReading() {
  stop_.request_stop();
  if (watcher_) watcher_->stopReading();
}

void WindowSession::retry() {
  if (std::holds_alternative<opened_source::Phone>(source_)) {
    if (watcher_) watcher_->start();
  } else if (const auto* const stopped = std::get_if<opened_source::Stopped>(&source_)) {
    open(std::string{stopped->path});
  } else if (const auto* const failed = std::get_if<opened_source::Failed>(&source_)) {
    open(std::string{failed->path});
  }
}

double WindowSession::kept(std::string_view key, double initial) const {
  if (surroundings_.defaults == nullptr) return initial;
  const auto object = surroundings_.defaults->object(key);
  if (!object) return initial;
  if (const bool* const flag = object->asBool()) return *flag ? 1 : 0;
  const auto number = object->asNumber();
  return number && std::isfinite(*number) ? *number : initial;
}

void WindowSession::keep(std::string key, double number) {
  UserDefaults* const defaults = surroundings_.defaults;
  if (defaults == nullptr || isDemo(surroundings_.environment)) return;
  storing_.post(
      [defaults, key = std::move(key), number] { defaults->set(key, JsonValue{number}); });
}

void WindowSession::show(OpenedSource source) {
  source_ = std::move(source);
  Q_EMIT sourceChanged();
}

}  // namespace tavrix::window
