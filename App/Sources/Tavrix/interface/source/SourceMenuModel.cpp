#include "interface/source/SourceMenuModel.h"

#include <filesystem>

#include "device/cable/DeviceWatch.h"
#include "foundation/Text.h"
#include "interface/engine/EngineObjects.h"
#include "interface/session/WindowSession.h"
#include "interface/words/Words.h"
#include "text/PhoneSentences.h"

namespace tavrix::window {
namespace {

std::string stateText(Language language, PhoneState state) {
  switch (state) {
    case PhoneState::ready:
      return say(language, tavrix::sentences::stateReady);
    case PhoneState::locked:
      return say(language, tavrix::sentences::stateLocked);
    case PhoneState::trustPending:
      return say(language, tavrix::sentences::stateTrustPending);
    case PhoneState::trustDenied:
      return say(language, tavrix::sentences::stateTrustDenied);
    case PhoneState::unreachable:
      return say(language, tavrix::sentences::stateUnreachable);
    case PhoneState::silent:
      return say(language, tavrix::sentences::stateSilent);
  }
  return {};
}

/// Returns true if a folder has pictures of a phone or a card.
bool isSource(const std::string& path) {
  const bool isCard = openPictureSource(path, nullptr)->kind() == PictureSource::Kind::card;
  std::error_code fault;
  return isCard || std::filesystem::exists(std::filesystem::path{path} / "snapshot.json", fault);
}

}  // namespace

SourceMenuModel::SourceMenuModel(WindowSession& session, const Words& words)
    : session_(session),
      model_(session.model()),
      words_(words),
      subscription_(model_.subscribe([this](const StateChange& change) {
        if (change.has(StateTopic::device)) refresh();
      })) {
  refresh();
}

SourceMenuModel* SourceMenuModel::create(QQmlEngine* engine, QJSEngine* /*script*/) {
  return new SourceMenuModel{EngineObjects::of<WindowSession>(*engine),
                             EngineObjects::of<Words>(*engine)};
}

void SourceMenuModel::refresh() {
  const DeviceFacts& device = *model_.state().device;
  std::vector<PhoneOnCable> phones;
  currentID_.clear();
  if (const auto* const ready = device.state.as<DeviceState::Ready>()) {
    currentID_ = ready->phone.deviceID;
    phones.push_back(ready->phone);
  }
  phones.insert(phones.end(), device.others.begin(), device.others.end());
  if (phones == phones_) return;
  beginResetModel();
  phones_ = std::move(phones);
  endResetModel();
  Q_EMIT countChanged();
}

int SourceMenuModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count();
}

QVariant SourceMenuModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<std::size_t>(index.row());
  if (!index.isValid() || row >= phones_.size()) return {};
  const PhoneOnCable& phone = phones_[row];
  switch (role) {
    case NameRole:
      return QString::fromStdString(printable(deviceNameOf(phone)));
    case StateRole:
      return QString::fromStdString(stateText(words_.language(), phone.state));
    case IsCurrentRole:
      return phone.deviceID == currentID_ &&
             std::holds_alternative<data_origin::Device>(model_.state().origin);
    default:
      return {};
  }
}

QHash<int, QByteArray> SourceMenuModel::roleNames() const {
  return {{NameRole, "name"}, {StateRole, "stateText"}, {IsCurrentRole, "isCurrent"}};
}

void SourceMenuModel::openPhone(int row) {
  if (row < 0 || row >= count()) return;
  session_.open("phone:" + phones_[static_cast<std::size_t>(row)].deviceID);
}

void SourceMenuModel::openAnyPhone() { session_.open("phone"); }

void SourceMenuModel::openFolder(const QUrl& folder) {
  if (folder.isLocalFile()) session_.open(folder.toLocalFile().toStdString());
}

void SourceMenuModel::drop(const QUrl& folder) {
  if (!folder.isLocalFile()) return;
  looking_.post([this, life = std::weak_ptr{life_}, folder,
                 path = folder.toLocalFile().toStdString(), &loop = session_.loop()] {
    std::error_code fault;
    const bool isFolder = std::filesystem::is_directory(path, fault);
    const bool isSourceFolder = isFolder && isSource(path);
    loop.post([this, life, folder, isFolder, isSourceFolder] {
      if (!life.lock() || !isFolder) return;
      isSourceFolder ? openFolder(folder) : offer(folder);
    });
  });
}

void SourceMenuModel::offer(const QUrl& folder) {
  const std::string path = printable(folder.toLocalFile().toStdString());
  Q_EMIT destinationOffered(
      folder, QString::fromStdString(say(words_.language(), sentences::dropText, path)));
}

}  // namespace tavrix::window
