#include "history/Verdict.h"

#include "foundation/Sentences.h"

namespace tavrix {
namespace {

/// For a run in which no file failed, but which did not read its whole source.
constexpr Sentence<> readInPart{"Источник прочитан не полностью",
                                "The source was read only in part"};

}  // namespace

std::string verdictText(Language language, TransferRecord::Status status,
                        const TransferRecord::Totals& totals) {
  switch (status) {
    case TransferRecord::Status::completed:
      return say(language, sentences::allOnMac);
    case TransferRecord::Status::completedWithFailures:
      if (totals.failed == 0) return say(language, readInPart);
      return say(language, sentences::notTransferred, numberText(language, totals.failed));
    case TransferRecord::Status::cancelled:
    case TransferRecord::Status::interrupted:
      return say(language, sentences::transferBroken);
  }
  return {};
}

std::string stateText(Language language, TransferRecord::PartState state) {
  switch (state) {
    case TransferRecord::PartState::onMac:
      return say(language, sentences::stateOnMac);
    case TransferRecord::PartState::alreadyThere:
      return say(language, sentences::stateAlreadyThere);
    case TransferRecord::PartState::failed:
      return say(language, sentences::stateFailed);
    case TransferRecord::PartState::off:
      return say(language, sentences::stateOff);
    case TransferRecord::PartState::notReached:
      return say(language, sentences::stateNotReached);
  }
  return {};
}

std::string outcomeText(Language language, TransferRecord::Outcome outcome) {
  switch (outcome) {
    case TransferRecord::Outcome::onMac:
      return say(language, sentences::stateOnMac);
    case TransferRecord::Outcome::alreadyThere:
      return say(language, sentences::stateAlreadyThere);
    case TransferRecord::Outcome::failed:
      return say(language, sentences::stateFailed);
    case TransferRecord::Outcome::optimized:
      return say(language, sentences::stateOptimized);
    case TransferRecord::Outcome::notReached:
      return say(language, sentences::stateNotReached);
  }
  return {};
}

std::string shotsText(Language language, std::uint64_t count) {
  return counted(language, count, sentences::shots);
}

}  // namespace tavrix
