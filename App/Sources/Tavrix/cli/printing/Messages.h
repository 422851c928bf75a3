#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "cli/call/ProgressForm.h"
#include "foundation/Sentence.h"
#include "foundation/json/JsonWriter.h"

namespace tavrix::cli {

/// Standard error of one call: sentences and log lines, each on a line of its own, and the progress
/// of long work. For programs (ProgressForm::json) each line is one JSON object, as docs/json.md
/// describes. May be used on several threads at the same time.
class Messages {
 public:
  struct Form {
    ProgressForm progress = ProgressForm::bar;
    bool isQuiet = false;          ///< without notes and progress
    std::optional<int> columns{};  ///< of the terminal; nullopt if it is not a terminal
    Language language = Language::russian;
  };

  Messages(TextSink& sink, const Form& form) : sink_(sink), form_(form) {}
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;

  const Form& form() const { return form_; }

  /// Reports the error that ended the command.
  void error(const std::string& sentence) const { write("error", sentence); }
  /// Reports something that the user must know of, or has to act on.
  void warn(const std::string& sentence) const { write("warning", sentence); }
  /// Reports something that is good to know. Writes nothing if the call is quiet.
  void note(const std::string& sentence) const {
    if (!form_.isQuiet) write("note", sentence);
  }
  void logLine(std::string_view line) const;

  /// Returns true if progress is shown, as a bar or for programs.
  bool showsProgress() const;
  /// Writes a text, such as a progress bar, that does not end its line.
  void writeOpen(std::string_view text) const;
  /// Writes one line with a JSON object. `addFields` receives the writer after the field "type".
  template <typename AddFields>
  void writeObject(std::string_view type, const AddFields& addFields) const {
    const std::lock_guard lock{mutex_};
    JsonWriter json{sink_, JsonLayout::line};
    json.beginObject().field("type", type);
    addFields(json);
    json.endObject().finish();
  }

 private:
  void write(std::string_view level, const std::string& sentence) const;
  void writeLine(std::string_view start, std::string_view text) const;

  TextSink& sink_;
  Form form_;
  mutable std::mutex mutex_;
};

}  // namespace tavrix::cli
