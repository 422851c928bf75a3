#pragma once

#include <QObject>
#include <memory>
#include <optional>
#include <string>

#include "USBPhonePresence/USBPhonePresence.h"
#include "device/cable/DeviceWatcher.h"
#include "foundation/tasks/SerialQueue.h"
#include "interface/session/OpenedSource.h"
#include "model/AppModel.h"
#include "services/Environment.h"
#include "services/ModelHost.h"
#include "sources/FollowedDevice.h"
#include "sources/PictureSource.h"

namespace tavrix::window {

/// Everything outside the program that the window uses. `main` passes the real surroundings, tests
/// pass their own. All pointers may be null.
struct WindowSurroundings {
  MainLoop& loop;
  Environment environment{};
  UserDefaults* defaults = nullptr;  ///< the saved choices of the user
  Language language = Language::russian;
  std::string systemLocaleID = "ru_RU";
  std::string systemTimeZoneID = "UTC";
  std::optional<std::string> gazetteerPath{};      ///< without it, places have no names
  std::optional<std::string> conversionProgram{};  ///< without it, nothing is converted
  std::function<Instant()> now{};
  std::function<Uuid()> newID{};
  /// The clock of paces on screen; without it, that of the loop.
  std::function<MainLoop::Moment()> paceClock{};
  PhoneBrowser* phones = nullptr;  ///< without it, no phones are followed
  USBPhonePresence* bus = nullptr;
  DestinationAccess destinations{};
  Log* log = &silentLog();
};

/// The application model of the window with its services, and the source that the user opened.
/// All functions must be called on the main loop.
class WindowSession : public QObject {
  Q_OBJECT

 public:
  /// Everything in `surroundings` must outlive the session.
  explicit WindowSession(WindowSurroundings surroundings);
  ~WindowSession() override;

  AppModel& model() { return *model_; }
  const AppModel& model() const { return *model_; }
  MainLoop& loop() { return surroundings_.loop; }
  /// Returns the moment for the pace of work on screen.
  MainLoop::Moment paceMoment() const {
    return surroundings_.paceClock ? surroundings_.paceClock() : surroundings_.loop.now();
  }
  const WindowSurroundings& surroundings() const { return surroundings_; }

  /// Opens a folder, a card or a snapshot by its path, or follows the phones ("phone",
  /// "phone:SERIAL"). Does nothing during a run.
  void open(const std::string& source);
  /// Stops the reading of a folder or a phone.
  void stopReading();
  /// Starts a reading again that was stopped or failed.
  void retry();
  const OpenedSource& source() const { return source_; }
  /// Returns the state folder, or nullopt if the environment names none.
  const std::optional<std::string>& stateFolder() const { return stateFolder_; }

  /// Returns the number that is kept under a key about the window itself, or `initial` if there is
  /// none. A flag is 0 or 1.
  double kept(std::string_view key, double initial) const;
  /// Stores a choice about the window itself in the user's defaults, in the background. In a demo
  /// nothing is stored.
  void keep(std::string key, double number);

 Q_SIGNALS:
  /// source() has changed.
  void sourceChanged();

 private:
  /// The settings by which the shots of a folder are dated.
  struct Dating {
    TimeZone zone;
    bool fromNames = true;

    friend bool operator==(const Dating&, const Dating&) = default;
  };
  Dating dating() const;
  /// Reads the folder again if its shots are dated otherwise now.
  void followDating();

  AppModel::Services services();
  std::unique_ptr<PlaceNaming> openPlaceNaming();
  bool keepRecord(TransferRecord record);
  void followPhones(const std::string& wanted);
  void readFolder(const std::string& path);
  void show(OpenedSource source);

  WindowSurroundings surroundings_;
  std::shared_ptr<const bool> life_ = std::make_shared<bool>(true);
  std::optional<std::string> stateFolder_;
  std::unique_ptr<PlaceNaming> naming_;
  SerialQueue storing_;
  ModelHost host_;
  std::optional<AppModel> model_;
  OpenedSource source_;
  Dating dating_{TimeZone::utc()};   ///< of the folder that was read last
  std::uint64_t readingNumber_ = 0;  ///< of the last reading of a folder; earlier ones are ignored
  std::stop_source stop_;
  std::unique_ptr<CatalogCounts> counts_;
  std::optional<DeviceWatcher> watcher_;
  std::optional<FollowedDevice> followed_;
  SerialQueue reading_;
  std::optional<AppModel::Subscription> subscription_;
};

}  // namespace tavrix::window
