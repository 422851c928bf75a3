#include "cli/sessions/ModelSession.h"

#include "cli/sessions/ChosenPlaces.h"
#include "cli/sessions/ChosenShots.h"
#include "cli/sessions/Failures.h"
#include "cli/sessions/RunHistory.h"
#include "cli/sessions/Source.h"
#include "services/HistoryFolder.h"
#include "settings/PersistedSettings.h"

namespace tavrix::cli {

ModelSession::ModelSession(const CommandContext& context, PlaceNaming* naming, bool showsFolders)
    : context_(context), host_(context.surroundings.conversionProgram) {
  model_.emplace(services(naming, showsFolders), context.settings);
  if (const auto* const defaults = context.surroundings.defaults) {
    model_->changeSavedPresets(PersistedSettings::read(*defaults, {}).savedPresets);
  }
  // A command asks no questions, and leaves a record even if there is nothing to copy.
  model_->setRunsWithoutFiles(true);
  model_->setAsksAboutOptimized(false);
  model_->choose(choiceOf(context));
}

AppModel::Services ModelSession::services(PlaceNaming* naming, bool showsFolders) {
  AppModel::Services services =
      host_.services(loop_, context_.surroundings.now, context_.surroundings.newID);
  services.log = &context_.log;
  services.language = context_.language();
  // Output for programs does not depend on the language.
  const Language written = context_.call.json ? Language::russian : context_.language();
  services.writtenLanguage = written;
  services.systemLocaleID = context_.surroundings.systemLocaleID;
  services.placeNaming = naming;
  services.keepsGroupsDebug = keepsGroupsDebug(context_.surroundings.environment);
  services.showsFolders = showsFolders || services.keepsGroupsDebug;
  services.stateFolder = stateFolder(context_);
  services.failureText = [this, written](const std::exception_ptr& failure) {
    return failureOf(written, context_.call.operands.at(1), failure).sentence();
  };
  services.recordedFiles = [this](const PhoneIdentity& phone,
                                  const std::vector<AssetBundle>& shots) {
    return recordedFiles(context_, phone, shots);
  };
  services.keepRecord = [this](TransferRecord record) {
    record.destinationPath = absolutePath(record.destinationPath);
    recordFailure_ = writeRecord(context_, record);
    return !recordFailure_;
  };
  return services;
}

void ModelSession::open() {
  model_->sourceReady(readSource(context_), data_origin::Snapshot{});
  openDestination();
}

void ModelSession::openDestination() {
  model_->setDestination(context_.call.operands.at(1));
  runUntil([this] { return model_->isSettled(); });
  const auto& library = model_->library();
  if (!library) return;
  tellUnknownPlaces(context_, *library->bundles, library->places.get());
}

void ModelSession::tell(const std::string& sentence) {
  if (sentence == told_) return;
  told_ = sentence;
  context_.warn(sentence);
}

}  // namespace tavrix::cli
