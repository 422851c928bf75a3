#include "device/afc/AfcPacket.h"
#include "device/simulator/platform/Bench.h"

namespace tavrix::simulator {
namespace {

using Trust = SimulatedPhone::Trust;

/// A conversation with the service that describes the phone and starts its other services.
class Lockdown {
 public:
  Lockdown(Bench& bench, std::size_t phone, Stream& stream)
      : bench_(bench), index_(phone), stream_(stream) {}

  void serve() {
    for (std::string text; stream_.readSized(text);) {
      const auto part = bench_.beginCall(index_);
      if (!part) return;
      const PropertyList request = PropertyList::parse(text);
      const std::string name = request.text("Request");
      PropertyList answer;
      answer.set("Request", name);
      fill(answer, name, request);
      if (name != "GetValue" && !answer.text("Error").empty()) ++bench_.refusals;
      if (!send(answer.xml(), *part) || name == "Goodbye") return;
      if (!changeSession(answer, name)) return;
    }
  }

 private:
  bool send(const std::string& answer, AnswerPart part) {
    if (part == AnswerPart::none) return false;
    if (part == AnswerPart::whole) return stream_.writeSized(answer);
    stream_.writeSized(answer, answer.size() / 2);
    bench_.vanish(index_);
    return false;
  }

  void fill(PropertyList& answer, const std::string& name, const PropertyList& request) {
    if (name == "QueryType") {
      answer.set("Type", "com.apple.mobile.lockdown");
    } else if (name == "GetValue") {
      giveValue(answer, request);
    } else if (name == "Pair" || name == "ValidatePair") {
      pair(answer);
    } else if (name == "StartSession") {
      startSession(answer);
    } else if (name == "StartService") {
      startService(answer, request.text("Service"));
    } else if (name != "StopSession" && name != "Goodbye") {
      answer.set("Error", "InvalidRequest");
    }
  }

  bool changeSession(const PropertyList& answer, const std::string& name) {
    const SimulatedPhone phone = bench_.phone(index_);
    if (name == "StartSession" && answer.text("Error").empty()) {
      isTrusted_ = true;
      return !phone.usesTLS || stream_.secure(bench_.keys().context());
    }
    if (name == "StopSession") {
      isTrusted_ = false;
      stream_.unsecure();
    }
    return true;
  }

  /// Returns the values of the phone. A computer that is not trusted does not get all of them.
  PropertyList values() {
    const SimulatedPhone phone = bench_.phone(index_);
    PropertyList values;
    values.set("DeviceName", phone.name).set("DeviceClass", "iPhone");
    values.set("ProductType", phone.productType).set("ProductVersion", phone.productVersion);
    values.set("UniqueDeviceID", phone.deviceID).set("WiFiAddress", "00:00:00:00:00:01");
    values.setData("DevicePublicKey", bench_.keys().publicKey());
    if (isTrusted_ && !phone.serialNumber.empty()) values.set("SerialNumber", phone.serialNumber);
    return values;
  }

  void giveValue(PropertyList& answer, const PropertyList& request) {
    const std::string key = request.text("Key");
    const PropertyList all = values();
    if (!key.empty()) answer.set("Key", key);
    if (!request.text("Domain").empty()) {
      answer.set("Error", "MissingValue");
    } else if (key.empty()) {
      answer.set("Value", all);
    } else if (const std::string data = all.data(key.c_str()); !data.empty()) {
      answer.setData("Value", data);
    } else if (const std::string text = all.text(key.c_str()); !text.empty()) {
      answer.set("Value", text);
    } else {
      answer.set("Error", isTrusted_ ? "MissingValue" : "GetProhibited");
    }
  }

  void pair(PropertyList& answer) {
    const SimulatedPhone phone = bench_.phone(index_);
    if (phone.trust == Trust::denied) {
      answer.set("Error", "UserDeniedPairing");
    } else if (phone.isLocked && phone.trust != Trust::trusted) {
      answer.set("Error", "PasswordProtected");
    } else if (phone.trust == Trust::pending) {
      answer.set("Error", "PairingDialogResponsePending");
    } else {
      bench_.change(index_, [](SimulatedPhone& each) { each.trust = Trust::trusted; });
      answer.setData("EscrowBag", "escrow");
    }
  }

  void startSession(PropertyList& answer) {
    const SimulatedPhone phone = bench_.phone(index_);
    if (phone.trust != Trust::trusted) {
      answer.set("Error", "InvalidHostID");
    } else {
      answer.set("SessionID", "00000000-0000-0000-0000-00000000005E");
      answer.set("EnableSessionSSL", phone.usesTLS);
    }
  }

  void startService(PropertyList& answer, const std::string& service) {
    const SimulatedPhone phone = bench_.phone(index_);
    answer.set("Service", service);
    if (!isTrusted_) {
      answer.set("Error", "SessionInactive");
    } else if (phone.isLocked) {
      answer.set("Error", "PasswordProtected");
    } else if (service != afcServiceName) {
      answer.set("Error", "InvalidService");
    } else {
      answer.set("Port", std::uint64_t{filesPort}).set("EnableServiceSSL", phone.usesTLS);
    }
  }

  Bench& bench_;
  std::size_t index_;
  Stream& stream_;
  bool isTrusted_ = false;
};

}  // namespace

void serveLockdown(Bench& bench, std::size_t phone, Stream& stream) {
  Lockdown{bench, phone, stream}.serve();
}

}  // namespace tavrix::simulator
