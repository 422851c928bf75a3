#include <openssl/crypto.h>

#include <array>
#include <map>
#include <mutex>

#include "device/cable/AfcPhoneFiles.h"
#include "device/cable/PatientThread.h"
#include "device/cable/Phones.h"
#include "device/cable/platform/PhoneLibrary.h"
#include "device/cable/platform/UsbServiceStream.h"
#include "foundation/Text.h"

namespace tavrix {
namespace {

constexpr const char* label = "tavrix";

/// Keeps the cryptographic library usable while the program exits. A call that was given up may
/// still use it then, and would crash if the library released its tables. This takes effect only
/// before the library is used for the first time, therefore before main().
[[maybe_unused]] const int keepsCryptography = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);

PhoneState stateOf(lockdownd_error_t error) {
  switch (error) {
    case LOCKDOWN_E_SUCCESS:
      return PhoneState::ready;
    case LOCKDOWN_E_PASSWORD_PROTECTED:
    case LOCKDOWN_E_ESCROW_LOCKED:
      return PhoneState::locked;
    case LOCKDOWN_E_PAIRING_DIALOG_RESPONSE_PENDING:
      return PhoneState::trustPending;
    case LOCKDOWN_E_USER_DENIED_PAIRING:
      return PhoneState::trustDenied;
    default:
      return PhoneState::unreachable;
  }
}

PhoneError::Kind errorOf(PhoneState state) {
  switch (state) {
    case PhoneState::locked:
      return PhoneError::Kind::locked;
    case PhoneState::trustPending:
      return PhoneError::Kind::trustPending;
    case PhoneState::trustDenied:
      return PhoneError::Kind::trustDenied;
    default:
      return PhoneError::Kind::unreachable;
  }
}

/// Returns true if the connection failed, rather than the phone's answer was no.
bool isOfConnection(lockdownd_error_t error) {
  return error == LOCKDOWN_E_MUX_ERROR || error == LOCKDOWN_E_SSL_ERROR ||
         error == LOCKDOWN_E_RECEIVE_TIMEOUT || error == LOCKDOWN_E_PLIST_ERROR;
}

/// A conversation with a phone about its state and properties.
class Conversation {
 public:
  explicit Conversation(const std::string& deviceID) {
    idevice_t device = nullptr;
    if (idevice_new(&device, deviceID.c_str()) != IDEVICE_E_SUCCESS) {
      throw PhoneError{PhoneError::Kind::gone};
    }
    device_.reset(device);
    beginSession();
    if (error_ == LOCKDOWN_E_INVALID_HOST_ID) askForTrust();
    if (error_ == LOCKDOWN_E_SUCCESS) startService();
  }

  PhoneState state() const { return stateOf(error_); }
  idevice_t device() const { return device_.get(); }
  const lockdownd_service_descriptor& service() const { return *service_; }

  /// Returns nullopt if the phone does not say it. Throws PhoneError if the answer was lost.
  std::optional<std::string> value(const char* key) {
    if (client_ == nullptr) beginWithoutSession();
    if (client_ == nullptr) return std::nullopt;
    plist_t raw = nullptr;
    const lockdownd_error_t error = lockdownd_get_value(client_.get(), nullptr, key, &raw);
    if (isOfConnection(error)) throw PhoneError{PhoneError::Kind::gone};
    if (error != LOCKDOWN_E_SUCCESS) return std::nullopt;
    const PropertyNode node{raw};
    if (node == nullptr || plist_get_node_type(node.get()) != PLIST_STRING) return std::nullopt;
    std::uint64_t length = 0;
    const char* const text = plist_get_string_ptr(node.get(), &length);
    return replacingInvalidUtf8(std::string{text, static_cast<std::size_t>(length)});
  }

 private:
  void beginSession() {
    lockdownd_client_t client = nullptr;
    error_ = lockdownd_client_new_with_handshake(device_.get(), &client, label);
    if (error_ == LOCKDOWN_E_SUCCESS) client_.reset(client);
  }

  void beginWithoutSession() {
    lockdownd_client_t client = nullptr;
    if (lockdownd_client_new(device_.get(), &client, label) == LOCKDOWN_E_SUCCESS) {
      client_.reset(client);
    }
  }

  /// Asks a phone that has forgotten this computer to trust it.
  void askForTrust() {
    beginWithoutSession();
    if (client_ == nullptr) return;
    error_ = lockdownd_pair(client_.get(), nullptr);
    if (error_ != LOCKDOWN_E_SUCCESS) return;
    client_.reset();
    beginSession();
  }

  void startService() {
    lockdownd_service_descriptor_t service = nullptr;
    error_ = lockdownd_start_service(client_.get(), afcServiceName, &service);
    service_.reset(service);
    if (error_ == LOCKDOWN_E_SUCCESS && service_ == nullptr) error_ = LOCKDOWN_E_UNKNOWN_ERROR;
  }

  DeviceHandle device_;
  LockdownHandle client_;
  ServiceHandle service_;
  lockdownd_error_t error_ = LOCKDOWN_E_UNKNOWN_ERROR;
};

PhoneOnCable tellOf(const std::string& deviceID) {
  PhoneOnCable phone;
  phone.deviceID = deviceID;
  try {
    Conversation conversation{deviceID};
    phone.state = conversation.state();
    // Files of a phone that has no number for a moment would be taken for those of another phone.
    phone.name = conversation.value("DeviceName");
    phone.serialNumber = conversation.value("SerialNumber");
    phone.model = conversation.value("ProductType");
  } catch (const PhoneError&) {
    if (phone.state == PhoneState::ready) phone.state = PhoneState::unreachable;
  }
  return phone;
}

std::vector<std::string> listDeviceIDs() {
  char** raw = nullptr;
  int count = 0;
  if (idevice_get_device_list(&raw, &count) != IDEVICE_E_SUCCESS) {
    throw PhoneError{PhoneError::Kind::noService};
  }
  std::vector<std::string> ids;
  for (int i = 0; raw != nullptr && i < count; ++i) ids.emplace_back(raw[i]);
  if (raw != nullptr) idevice_device_list_free(raw);
  return ids;
}

std::shared_ptr<AfcClient> connectToFiles(const std::string& deviceID) {
  const Conversation conversation{deviceID};
  if (conversation.state() != PhoneState::ready) throw PhoneError{errorOf(conversation.state())};
  return std::make_shared<AfcClient>(
      connectToService(conversation.device(), conversation.service()));
}

class UsbPhoneBrowser : public PhoneBrowser {
 public:
  explicit UsbPhoneBrowser(std::chrono::milliseconds patience) : patience_(patience) {}

  std::vector<std::string> deviceIDs(const std::stop_token& stop) override {
    auto ids = ask("", stop, [] { return listDeviceIDs(); });
    if (!ids) throw PhoneError{PhoneError::Kind::noService};
    return *std::move(ids);
  }
  PhoneOnCable describe(const std::string& deviceID, const std::stop_token& stop) override {
    auto phone = ask("describe " + deviceID, stop, [deviceID] { return tellOf(deviceID); });
    if (phone) return *std::move(phone);
    PhoneOnCable silent;
    silent.deviceID = deviceID;
    silent.state = PhoneState::silent;
    return silent;
  }
  std::unique_ptr<PhoneFiles> openFiles(const std::string& deviceID,
                                        const std::stop_token& stop) override {
    auto client = ask("open " + deviceID, stop, [deviceID] { return connectToFiles(deviceID); });
    if (!client) throw PhoneError{PhoneError::Kind::silent};
    return afcPhoneFiles(*std::move(client), patience_, stop);
  }

 private:
  /// A question whose caller no longer waits for the answer.
  struct Unanswered {
    std::unique_ptr<PatientThread> thread;
    bool isLate = false;  ///< the answer did not come within the patience
  };

  /// Returns nullopt if no answer came. While an earlier question of the same kind is unanswered,
  /// no other is asked, so that a phone that stays silent costs one thread.
  template <typename Work>
  auto ask(const std::string& question, const std::stop_token& stop, Work work)
      -> std::optional<decltype(work())> {
    if (isUnanswered(question, stop)) {
      if (stop.stop_requested()) throw PhoneError{PhoneError::Kind::stopped};
      return std::nullopt;
    }
    auto thread = std::make_unique<PatientThread>(patience_);
    auto answer = thread->ask(
        [work = std::move(work)] {
          const BrokenPipeGuard guard;
          return work();
        },
        stop);
    const bool isStopped = answer.outcome == PatientThread::Outcome::stopped;
    if (answer.outcome != PatientThread::Outcome::done) {
      remember(question, {std::move(thread), !isStopped});
    }
    if (isStopped) throw PhoneError{PhoneError::Kind::stopped};
    return std::move(answer.result);
  }
  /// Waits for the answer to a question that was stopped, because it may be about to come.
  bool isUnanswered(const std::string& question, const std::stop_token& stop) {
    Unanswered earlier;
    {
      const std::lock_guard lock{mutex_};
      const auto found = unanswered_.find(question);
      if (found == unanswered_.end()) return false;
      if (found->second.isLate && found->second.thread->isBusy()) return true;
      earlier = std::move(found->second);
      unanswered_.erase(found);
    }
    if (earlier.thread->awaitIdle(stop)) return false;
    earlier.isLate = !stop.stop_requested();
    remember(question, std::move(earlier));
    return true;
  }
  void remember(const std::string& question, Unanswered unanswered) {
    const std::lock_guard lock{mutex_};
    unanswered_[question] = std::move(unanswered);
  }

  std::chrono::milliseconds patience_;
  std::mutex mutex_;
  std::map<std::string, Unanswered> unanswered_;
};

}  // namespace

std::string_view textOf(PhoneState state) {
  constexpr std::array<std::string_view, 6> texts{"ready",       "locked",      "trustPending",
                                                  "trustDenied", "unreachable", "silent"};
  return texts.at(static_cast<std::size_t>(state));
}

std::unique_ptr<PhoneBrowser> Phones::openBrowser(std::chrono::milliseconds longest) {
  return std::make_unique<UsbPhoneBrowser>(longest);
}

std::vector<PhoneOnCable> Phones::list(PhoneBrowser& browser, const std::stop_token& stop) {
  std::vector<PhoneOnCable> phones;
  for (const std::string& id : browser.deviceIDs(stop))
    phones.push_back(browser.describe(id, stop));
  return phones;
}

}  // namespace tavrix
