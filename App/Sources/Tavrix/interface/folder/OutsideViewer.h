#pragma once

#include <functional>
#include <memory>
#include <string>

#include "device/thumbnails/PreviewFiles.h"
#include "model/AppModel.h"

namespace tavrix::window {

class WindowSession;

/// Fetches whole files of the open source, one at a time, for programs outside of the window. Used
/// on the main loop only. During a transfer only files that were fetched before are found.
class OutsideViewer {
 public:
  /// `session` must outlive the object.
  explicit OutsideViewer(WindowSession& session);

  /// Begins to fetch a file; an earlier fetch ends. Does nothing if there is no cache folder.
  void fetch(const MediaAsset& asset, PreviewFiles::Receiver receiver);
  /// Ends the fetch, if any. Its receiver is called no more.
  void stop() { request_.withdraw(); }

 private:
  void follow(const StateChange& change);
  void takeSource();

  AppModel& model_;
  std::unique_ptr<PreviewFiles> files_;
  PreviewRequest request_;
  AppModel::Subscription subscription_;
};

}  // namespace tavrix::window
