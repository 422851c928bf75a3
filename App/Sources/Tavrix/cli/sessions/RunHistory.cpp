#include "cli/sessions/RunHistory.h"

#include "cli/sentences/HistorySentences.h"
#include "cli/sessions/Source.h"
#include "foundation/Sentences.h"
#include "foundation/Text.h"
#include "foundation/files/FileError.h"
#include "services/HistoryFolder.h"

namespace tavrix::cli {

std::optional<std::string> writeRecord(const CommandContext& context,
                                       const TransferRecord& record) {
  const auto fail = [&](const std::string& sentence) {
    writeLog(context.log, "history: the record was not written: {}", PrivateField{sentence});
    return sentence;
  };
  try {
    HistoryFolder::create(requiredStateFolder(context), context.log).store().add(record);
    return std::nullopt;
  } catch (const FileError& error) {
    return fail(say(context.language(), sentences::historyNotWritten, printable(error.path()),
                    tavrix::sentences::systemErrorText(context.language(), error.code())));
  } catch (const CommandFailure& failure) {
    return fail(failure.sentence());
  }
}

}  // namespace tavrix::cli
