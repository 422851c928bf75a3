#include "interface/source/WaitingFacts.h"

#include <algorithm>
#include <filesystem>

#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "interface/words/WaitingSentences.h"
#include "services/FailureText.h"
#include "text/DeviceText.h"
#include "text/PlanSentences.h"
#include "text/SourceSentences.h"

namespace tavrix::window {
namespace {

namespace shared = tavrix::sentences;
using State = DeviceState;
using Step = WaitingFacts::Step;
using Steps = std::array<Step, 3>;
using enum Step;

/// The number of steps that are done; the next one is now.
Steps stepsAfter(std::size_t done) {
  Steps steps{open, open, open};
  for (std::size_t i = 0; i < steps.size(); ++i) {
    if (i <= done) steps.at(i) = i < done ? Step::done : now;
  }
  return steps;
}

double shareOf(std::uint64_t done, std::uint64_t total) {
  return total == 0 ? 0 : std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
}

/// Makes the screen of each kind of state.
class Teller {
 public:
  Teller(Language language, const DeviceFacts& device) : language_(language), device_(device) {}

  WaitingFacts operator()(const State::Waiting&) const {
    if (device_.isUnseen) {
      return {.title = unseenPhoneText(language_),
              .text = say(language_, sentences::unseenRemedy),
              .steps = stepsAfter(1),
              .isFault = true};
    }
    return {.title = say(language_, sentences::connectTitle),
            .text = say(language_, sentences::connectText),
            .steps = stepsAfter(0)};
  }
  WaitingFacts operator()(const State::Locked&) const {
    return withText(sentences::unlockTitle, stepsAfter(1));
  }
  WaitingFacts operator()(const State::Connecting& state) const {
    if (state.awaitsTrust) return withText(sentences::trustTitle, stepsAfter(2));
    WaitingFacts facts = withText(sentences::connectingTitle, std::nullopt);
    facts.isBusy = true;
    return facts;
  }
  WaitingFacts operator()(const State::Enumerating& state) const {
    WaitingFacts facts = busy(sentences::listingTitle, state.deviceName);
    facts.counts = counted(language_, state.itemsFound, shared::files);
    if (state.itemsExpected) {
      facts.fraction = shareOf(state.itemsFound, *state.itemsExpected);
      facts.counts = say(language_, sentences::foundOf, facts.counts,
                         numberText(language_, *state.itemsExpected));
    }
    return facts;
  }
  WaitingFacts operator()(const State::ReadingMetadata& state) const {
    WaitingFacts facts = busy(sentences::readingTitle, state.deviceName);
    addProgress(facts, state.status);
    return facts;
  }
  WaitingFacts operator()(const State::Stopped& state) const {
    if (state.reason == State::Stopped::Reason::phoneLeft) {
      return withText(sentences::goneTitle, stepsAfter(0));
    }
    return stopped();
  }
  WaitingFacts operator()(const State::Ready& state) const {
    return busy(sentences::connectingTitle, state.deviceName);
  }
  WaitingFacts operator()(const State::Failed& state) const {
    WaitingFacts facts = withText(titleOf(state.reason), stepsOf(state.reason));
    facts.retry = say(language_, sentences::retry);
    facts.isFault = true;
    return facts;
  }

  WaitingFacts operator()(const opened_source::None&) const { return ofPhones(); }
  WaitingFacts operator()(const opened_source::Phone&) const { return ofPhones(); }
  WaitingFacts operator()(const opened_source::Open& source) const { return opening(source.path); }
  WaitingFacts operator()(const opened_source::Reading& source) const {
    WaitingFacts facts = opening(source.path);
    if (source.progress.total == 0) return facts;
    facts.title = say(language_, sentences::readingTitle);
    addProgress(facts, source.progress);
    return facts;
  }
  WaitingFacts operator()(const opened_source::Stopped& source) const {
    WaitingFacts facts = stopped();
    facts.counts = nameOf(source.path);
    facts.isFolder = true;
    return facts;
  }
  WaitingFacts operator()(const opened_source::Failed& source) const {
    return {.title = say(language_, sentences::sourceFailedTitle),
            .text = sourceFailureText(language_, source.path, source.error).value_or(""),
            .retry = say(language_, sentences::retry),
            .isFolder = true,
            .isFault = true};
  }

 private:
  WaitingFacts ofPhones() const { return std::visit(*this, device_.state.kind); }
  WaitingFacts withText(const Sentence<>& title, const std::optional<Steps>& steps) const {
    return {.title = say(language_, title),
            .text = deviceText(language_, device_.state),
            .steps = steps};
  }
  WaitingFacts busy(const Sentence<>& title, const std::string& deviceName) const {
    return {.title = say(language_, title),
            .text = printable(deviceName),
            .isBusy = true,
            .canStop = true};
  }
  WaitingFacts opening(const std::string& path) const {
    return {.title = say(language_, sentences::openingTitle, nameOf(path)),
            .text = printable(path),
            .isBusy = true,
            .canStop = true,
            .isFolder = true};
  }
  WaitingFacts stopped() const {
    return {.title = say(language_, sentences::stoppedTitle),
            .text = say(language_, sentences::keptInCache),
            .retry = say(language_, sentences::goOnReading)};
  }
  void addProgress(WaitingFacts& facts, const MetadataPass::Progress& progress) const {
    facts.fraction = shareOf(progress.done(), progress.total);
    facts.counts = say(language_, sentences::readOf, numberText(language_, progress.done()),
                       counted(language_, progress.total, shared::filesOfTotal));
    if (progress.hits > 0) {
      facts.counts +=
          " · " + say(language_, shared::readingHits, numberText(language_, progress.hits));
    }
  }
  static std::string nameOf(const std::string& path) {
    const auto folder = std::filesystem::path{path}.lexically_normal();
    const auto name = folder.has_filename() ? folder : folder.parent_path();
    return printable(name.filename().string());
  }
  static const Sentence<>& titleOf(State::Failed::Reason reason) {
    switch (reason) {
      case State::Failed::Reason::noService:
        return sentences::connectTitle;
      case State::Failed::Reason::trustDenied:
        return sentences::deniedTitle;
      case State::Failed::Reason::unreachable:
      case State::Failed::Reason::silent:
        return sentences::unreachableTitle;
      case State::Failed::Reason::folderRefused:
        break;
    }
    return sentences::refusedTitle;
  }
  static std::optional<Steps> stepsOf(State::Failed::Reason reason) {
    if (reason == State::Failed::Reason::noService) return stepsAfter(0);
    if (reason == State::Failed::Reason::trustDenied) return stepsAfter(2);
    return std::nullopt;
  }

  Language language_;
  const DeviceFacts& device_;
};

}  // namespace

WaitingFacts waitingFacts(Language language, const DeviceFacts& device,
                          const OpenedSource& source) {
  return std::visit(Teller{language, device}, source);
}

std::optional<MetadataPass::Progress> readingProgress(const DeviceFacts& device,
                                                      const OpenedSource& source) {
  if (const auto* const folder = std::get_if<opened_source::Reading>(&source)) {
    return folder->progress;
  }
  const bool isPhone = std::holds_alternative<opened_source::Phone>(source);
  const auto* const phone = device.state.as<State::ReadingMetadata>();
  return isPhone && phone != nullptr ? std::optional{phone->status} : std::nullopt;
}

}  // namespace tavrix::window
