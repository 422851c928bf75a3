#pragma once

#include "device/cable/DeviceWatcher.h"
#include "sources/PictureSource.h"

namespace tavrix {

/// No phone could be read: the state of the watcher says why.
class PhoneNotReady : public std::exception {
 public:
  PhoneNotReady(DeviceState state, std::vector<PhoneOnCable> others)
      : state_(std::move(state)), others_(std::move(others)) {}

  const DeviceState& state() const { return state_; }
  /// Returns the phones on the cable that were not asked for.
  const std::vector<PhoneOnCable>& others() const { return others_; }
  const char* what() const noexcept override { return "PhoneNotReady"; }

 private:
  DeviceState state_;
  std::vector<PhoneOnCable> others_;
};

/// A phone on the cable. Reads it with a device watcher, as the window does, but does not wait for
/// a phone that is absent, locked or not trusted.
class PhoneSource : public PictureSource {
 public:
  /// `wanted` is the identifier or serial number of the phone; empty for the first one. `browser`
  /// may be null, which is treated like a missing service.
  PhoneSource(PhoneBrowser* browser, std::string wanted)
      : browser_(browser), wanted_(std::move(wanted)) {}

  Kind kind() const override { return Kind::phone; }
  FolderCatalogue readCatalogue(const ReadingSetup& reading) override;
  std::string nameOr(const std::optional<std::string>& givenName) const override;
  PhoneIdentity identity(const std::optional<std::string>& givenName) const override;
  std::shared_ptr<const SourceFiles> files() const override;

  /// Returns the phone that was read. Must not be called before readCatalogue().
  const PhoneOnCable& phone() const { return phone_.value(); }
  /// Returns the other phones on the cable at the end of the reading.
  const std::vector<PhoneOnCable>& others() const { return others_; }

 private:
  PhoneBrowser* browser_;
  std::string wanted_;
  std::optional<PhoneOnCable> phone_;
  std::vector<PhoneOnCable> others_;
  Shared<FolderCatalogue> catalogue_;
};

/// Returns access to the files of a phone with this catalogue. `watcher` may be null; if it is not,
/// it is told when copying loses the phone. Browser and watcher must outlive the result.
std::shared_ptr<const SourceFiles> filesOfPhone(PhoneBrowser& browser, const PhoneOnCable& phone,
                                                Shared<FolderCatalogue> catalogue,
                                                DeviceWatcher* watcher);

/// Returns how destinations recognise a phone: by its serial number, or by its identifier if it has
/// none.
PhoneIdentity identityOf(const PhoneOnCable& phone, const std::string& name);

}  // namespace tavrix
