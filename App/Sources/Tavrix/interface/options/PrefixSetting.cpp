#include "interface/options/PrefixSetting.h"

#include <algorithm>

namespace tavrix::window {
namespace {

/// Returns the name of the first photo of a catalogue, or a usual one if there is none.
std::string firstPhotoName(const std::vector<MediaAsset>& assets) {
  const auto found = std::find_if(assets.begin(), assets.end(), [](const MediaAsset& asset) {
    return asset.kind() == MediaKind::photo;
  });
  return found == assets.end() ? "IMG_0001.HEIC" : std::string{found->name()};
}

}  // namespace

PrefixSetting::Mode PrefixSetting::mode() const {
  return draft_ ? Custom : static_cast<Mode>(port_.now().layout.fileNamePrefixMode);
}

QString PrefixSetting::draft() const {
  return QString::fromStdString(draft_.value_or(port_.now().layout.customFileNamePrefix));
}

void PrefixSetting::setDraft(const QString& draft) {
  draft_ = draft.toStdString();
  Q_EMIT changed();
}

bool PrefixSetting::isDraftNew() const {
  return draft_ && *draft_ != port_.now().layout.customFileNamePrefix;
}

std::string PrefixSetting::phoneName() const {
  const auto* const device = std::get_if<data_origin::Device>(&port_.model().state().origin);
  return device == nullptr ? phoneName_ : device->name;
}

QString PrefixSetting::example() const {
  const auto mode = static_cast<FileNamePrefixMode>(this->mode());
  return QString::fromStdString(fileNamePrefix(mode, draft().toStdString(), phoneName()) +
                                firstPhotoName(*port_.model().state().assets));
}

void PrefixSetting::pick(int mode) {
  const std::string& custom = port_.now().layout.customFileNamePrefix;
  draft_.reset();
  if (mode == Custom && custom.empty()) {
    draft_.emplace();
  } else if (mode >= None && mode <= Custom) {
    port_.set("fileNamePrefixMode", textOf(static_cast<FileNamePrefixMode>(mode)));
  }
  Q_EMIT changed();
}

void PrefixSetting::take() {
  if (!draft_) return;
  const std::string taken = *std::exchange(draft_, std::nullopt);
  port_.change([&](Settings& settings) {
    using enum FileNamePrefixMode;
    settings.layout.customFileNamePrefix = taken;
    settings.layout.fileNamePrefixMode = taken.empty() ? none : custom;
  });
  Q_EMIT changed();
}

}  // namespace tavrix::window
