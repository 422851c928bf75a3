#pragma once

#include <functional>
#include <optional>
#include <string>

#include "cli/sessions/CommandContext.h"
#include "foundation/tasks/MainLoop.h"
#include "model/AppModel.h"
#include "services/ModelHost.h"

namespace tavrix::cli {

/// The application model of one call, with the loop and the threads that it runs on.
class ModelSession {
 public:
  /// `naming` may be null. It and `context` must outlive the session. `showsFolders` is passed to
  /// the model as ModelServices::showsFolders.
  ModelSession(const CommandContext& context, PlaceNaming* naming, bool showsFolders);
  ModelSession(const ModelSession&) = delete;
  ModelSession& operator=(const ModelSession&) = delete;

  const CommandContext& context() const { return context_; }
  AppModel& model() { return *model_; }
  MainLoop& loop() { return loop_; }
  /// Runs the loop until `isDone()` returns true.
  void runUntil(const std::function<bool()>& isDone) { loop_.runUntil(isDone); }

  /// Gives the model the source and the destination of the call. Returns when the folders are known
  /// and, if they are shown, also what would be written into them. Throws as readCatalogue().
  void open();
  /// As open(), for a model that gets its source in another way.
  void openDestination();

  /// Writes a sentence on a line of its own to standard error, after erasing a progress bar. Does
  /// nothing if the previous sentence was the same.
  void tell(const std::string& sentence);
  /// Returns the reason why the record of the run could not be written, or nullopt if it was
  /// written. Valid after the run has ended.
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
