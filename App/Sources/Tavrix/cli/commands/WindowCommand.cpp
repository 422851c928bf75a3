// The command that opens the window, which is a program of its own.

#include <cerrno>

#include "cli/commands/Commands.h"
#include "cli/printing/ResultPrinter.h"
#include "cli/sentences/CliSentences.h"
#include "cli/sentences/WindowSentences.h"
#include "cli/sessions/CommandContext.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"

namespace tavrix::cli {
namespace {

std::vector<std::string> argumentsOf(const CommandContext& context) {
  const Invocation& call = context.call;
  std::vector<std::string> arguments{"--language",
                                     context.language() == Language::russian ? "ru" : "en"};
  if (call.windowDestination) {
    arguments.insert(arguments.end(), {"--destination", *call.windowDestination});
  }
  if (!call.operands.empty()) {
    // The window takes a word that begins with dashes as an option.
    const bool isLikeOption = call.source().starts_with("--");
    arguments.push_back((isLikeOption ? "./" : "") + call.source());
  }
  return arguments;
}

}  // namespace

ExitStatus openWindow(const CommandContext& context) {
  const Language language = context.language();
  if (context.call.stateFolder) failUsage(say(language, sentences::windowTakesNo, "--state"));
  if (!context.call.settings.empty()) failUsage(say(language, sentences::windowTakesNo, "--set"));
  const Surroundings& surroundings = context.surroundings;
  const std::string program = printable(surroundings.windowProgram);
  const std::vector<std::string> arguments = argumentsOf(context);
  if (surroundings.canStart && !surroundings.canStart(surroundings.windowProgram)) {
    throw CommandFailure{ExitStatus::stopped,
                         say(language, sentences::windowNotInstalled, program)};
  }
  context.printer.windowStarts(surroundings.windowProgram, arguments);
  const int fault =
      surroundings.become ? surroundings.become(surroundings.windowProgram, arguments) : ENOENT;
  if (fault == 0) return ExitStatus::done;
  throw CommandFailure{ExitStatus::stopped,
                       say(language, sentences::windowNotStarted, program,
                           tavrix::sentences::systemErrorText(language, fault))};
}

}  // namespace tavrix::cli
