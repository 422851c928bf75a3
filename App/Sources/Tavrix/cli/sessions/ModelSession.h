#pragma once

#include <functional>
#include <optional>
#include <string>

#include "cli/sessions/CommandContext.h"
#include "foundation/tasks/MainLoop.h"
#include "model/AppModel.h"
#include "services/ModelHost.h"

namespace tavrix::cli {

/// The application model at work for one call, with the loop and the threads that it runs on.
class ModelSession {
 public:
  /// `naming` may be null. Both outlive the session. `showsFolders` as the model takes it.
  ModelSession(const CommandContext& context, PlaceNaming* naming, bool showsFolders);
  ModelSession(const ModelSession&) = delete;
  ModelSession& operator=(const ModelSession&) = delete;

  const CommandContext& context() const { return context_; }
  AppModel& model() { return *model_; }
  MainLoop& loop() { return loop_; }
  /// Runs the loop until something is so.
  void runUntil(const std::function<bool()>& isDone) { loop_.runUntil(isDone); }

  /// Gives the model the call's source and destination, and returns when the folders are known, and
  /// what is to be written into them where they are shown. Throws what readCatalogue() throws.
  void open();
  /// The same of a source that the model has, or will have, by itself.
  void openDestination();

  /// Writes a sentence on a line of its own on standard error, where a bar may stand; not twice
  /// running.
  void tell(const std::string& sentence);
  /// Why the record of the run is missing from the history. For when the run has ended.
  const std::optional<std::string>& recordFailure() const { return recordFailure_; }

 private:
  AppModel::Services services(PlaceNaming* naming, bool showsFolders);

  const CommandContext& context_;
  StandardMainLoop loop_;
  std::optional<std::string> recordFailure_;
  std::string told_;
  ModelHost host_;
  std::optional<AppModel> model_;
};

}  // namespace tavrix::cli
