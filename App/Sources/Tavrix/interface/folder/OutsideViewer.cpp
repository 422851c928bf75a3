#include "interface/folder/OutsideViewer.h"

#include "interface/session/WindowSession.h"

namespace tavrix::window {
namespace {

bool isTransferring(const AppState& state) {
  return std::holds_alternative<app_phase::Transferring>(state.phase);
}

PreviewFiles::Setup setupOf(WindowSession& session, const std::string& folder) {
  return {.loop = session.loop(), .folder = {.thumbnailFolder = folder}};
}

}  // namespace

OutsideViewer::OutsideViewer(WindowSession& session)
    : model_(session.model()),
      subscription_(model_.subscribe([this](const StateChange& change) { follow(change); })) {
  const auto folder = thumbnailFolderOf(session.surroundings().environment, std::nullopt);
  if (folder) files_ = std::make_unique<PreviewFiles>(setupOf(session, *folder));
  takeSource();
}

void OutsideViewer::takeSource() {
  const auto source = model_.files();
  if (files_ == nullptr || source == nullptr) return;
  const auto access = source->pictures();
  if (!access) return;
  files_->setSource(access->key, [source](std::stop_token stop) {
    const auto giveUp = [](PhoneError::Kind) { return false; };
    return source->openMedia(giveUp, std::move(stop));
  });
}

void OutsideViewer::follow(const StateChange& change) {
  if (files_ == nullptr) return;
  if (!isTransferring(change.before) && isTransferring(change.after)) {
    files_->beginTransfer([](const MediaAsset&) { return std::nullopt; });
  }
  if (isTransferring(change.before) && !isTransferring(change.after)) files_->endTransfer();
}

void OutsideViewer::fetch(const MediaAsset& asset, PreviewFiles::Receiver receiver) {
  if (files_ == nullptr) return;
  takeSource();
  request_ = files_->request(asset, std::move(receiver));
}

}  // namespace tavrix::window
