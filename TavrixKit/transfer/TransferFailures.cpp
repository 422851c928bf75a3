#include "transfer/TransferFailures.h"

#include <cerrno>

#include "foundation/Sentences.h"

namespace tavrix::TransferFailures {
namespace {

std::optional<int> systemErrorOf(int code) {
  return code == 0 ? std::nullopt : std::optional{code};
}

}  // namespace

FileOutcome::Failed leavesDestination(Language language) {
  return {say(language, sentences::pathOutsideDestination), {.code = "outsideDestination"}};
}

FileOutcome::Failed hasUnsafeName(Language language) {
  return {say(language, sentences::unsafeName), {.code = "unsafeName"}};
}

FileOutcome::Failed sourceFailed(Language language) {
  return {say(language, sentences::sourceFailed), {.code = "sourceFailed"}};
}

FileOutcome::Failed of(const SourceError& error, Language language) {
  using namespace sentences;
  switch (error.kind()) {
    case SourceError::Kind::notFound:
      return {say(language, notInSource), {.code = "notInSource"}};
    case SourceError::Kind::unreadable:
      return {say(language, unreadableInSource, systemErrorText(language, error.code())),
              {.code = "unreadable", .systemError = systemErrorOf(error.code())}};
    case SourceError::Kind::changedWhileRead:
      return {say(language, changedWhileRead), {.code = "changedWhileRead"}};
    case SourceError::Kind::unsafeName:
      return hasUnsafeName(language);
    case SourceError::Kind::notRegular:
      return {say(language, notRegularInSource), {.code = "notRegular"}};
    case SourceError::Kind::disconnected:
      return {say(language, phoneDisconnected), {.code = "disconnected"}};
  }
  return TransferFailures::sourceFailed(language);
}

FileOutcome::Failed of(const FileError& error, Language language) {
  if (error.code() == EXDEV) return leavesDestination(language);
  return {say(language, sentences::unwritable, sentences::systemErrorText(language, error.code())),
          {.code = "unwritable", .systemError = systemErrorOf(error.code())}};
}

std::string sizesText(std::uint64_t expected, std::optional<std::uint64_t> received,
                      Language language) {
  return received ? say(language, sentences::sizesDiffer, expected, *received)
                  : say(language, sentences::moreThanListed, expected);
}

FileOutcome::Failed hasOtherSize(std::string_view name, std::uint64_t expected,
                                 std::optional<std::uint64_t> received, Language language) {
  return {
      say(language, sentences::verificationFailed, name, sizesText(expected, received, language)),
      {.code = received ? "sizesDiffer" : "tooManyBytes",
       .expectedBytes = expected,
       .receivedBytes = received}};
}

}  // namespace tavrix::TransferFailures
