#include <array>

#include "device/Phones.h"
#include "device/platform/AfcPhoneFiles.h"
#include "device/platform/PhoneLibrary.h"
#include "foundation/Text.h"

namespace tavrix {
namespace {

constexpr const char* label = "tavrix";

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

/// One conversation with a phone about itself.
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
  lockdownd_service_descriptor_t service() const { return service_.get(); }

  std::optional<std::string> value(const char* key) {
    if (client_ == nullptr) beginWithoutSession();
    plist_t raw = nullptr;
    if (client_ == nullptr ||
        lockdownd_get_value(client_.get(), nullptr, key, &raw) != LOCKDOWN_E_SUCCESS) {
      return std::nullopt;
    }
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

  /// The phone has forgotten this computer.
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
    error_ = lockdownd_start_service(client_.get(), AFC_SERVICE_NAME, &service);
    service_.reset(service);
    if (error_ == LOCKDOWN_E_SUCCESS && service_ == nullptr) error_ = LOCKDOWN_E_UNKNOWN_ERROR;
  }

  DeviceHandle device_;
  LockdownHandle client_;
  ServiceHandle service_;
  lockdownd_error_t error_ = LOCKDOWN_E_UNKNOWN_ERROR;
};

PhoneOnCable describe(const std::string& deviceID) {
  PhoneOnCable phone;
  phone.deviceID = deviceID;
  try {
    Conversation conversation{deviceID};
    phone.state = conversation.state();
    phone.name = conversation.value("DeviceName");
    phone.serialNumber = conversation.value("SerialNumber");
    phone.model = conversation.value("ProductType");
  } catch (const PhoneError&) {
    phone.state = PhoneState::unreachable;
  }
  return phone;
}

}  // namespace

std::string_view textOf(PhoneState state) {
  constexpr std::array<std::string_view, 5> texts{"ready", "locked", "trustPending", "trustDenied",
                                                  "unreachable"};
  return texts.at(static_cast<std::size_t>(state));
}

std::vector<PhoneOnCable> Phones::list() {
  const BrokenPipeGuard guard;
  char** raw = nullptr;
  int count = 0;
  if (idevice_get_device_list(&raw, &count) != IDEVICE_E_SUCCESS) {
    throw PhoneError{PhoneError::Kind::noService};
  }
  std::vector<PhoneOnCable> phones;
  for (int i = 0; raw != nullptr && i < count; ++i) phones.push_back(describe(raw[i]));
  if (raw != nullptr) idevice_device_list_free(raw);
  return phones;
}

std::unique_ptr<PhoneFiles> Phones::openFiles(const std::string& deviceID) {
  const BrokenPipeGuard guard;
  const Conversation conversation{deviceID};
  if (conversation.state() != PhoneState::ready) throw PhoneError{errorOf(conversation.state())};
  afc_client_t client = nullptr;
  if (afc_client_new(conversation.device(), conversation.service(), &client) != AFC_E_SUCCESS) {
    throw PhoneError{PhoneError::Kind::unreachable};
  }
  return afcPhoneFiles(FilesHandle{client});
}

}  // namespace tavrix
