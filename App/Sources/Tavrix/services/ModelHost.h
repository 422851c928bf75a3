#pragma once

#include <optional>
#include <string>

#include "conversion/ProcessConverter.h"
#include "foundation/tasks/SerialQueue.h"
#include "model/ModelServices.h"

namespace tavrix {

/// The threads and the converter of an application model, shared by every front end. Must be
/// destroyed after the model: its destructor waits for work in progress.
class ModelHost {
 public:
  /// `conversionProgram` is the path of `tavrix-convert`; without it files are not converted.
  explicit ModelHost(const std::optional<std::string>& conversionProgram);
  ModelHost(const ModelHost&) = delete;
  ModelHost& operator=(const ModelHost&) = delete;

  /// Returns services for a model on `loop`; the caller sets the rest of the fields.
  ModelServices services(MainLoop& loop, std::function<Instant()> now, std::function<Uuid()> newID);

 private:
  std::optional<ProcessConverter> converter_;
  SerialQueue background_;
  SerialQueue transferring_;
  SerialQueue looking_;
};

}  // namespace tavrix
