#pragma once

#include "foundation/files/Folder.h"
#include "foundation/json/JsonWriter.h"

namespace tavrix {

/// Appends text to a file immediately. The file must outlive the sink. write() throws the errors of
/// the file.
class FileSink : public TextSink {
 public:
  explicit FileSink(WritableFile& file) : file_(file) {}
  void write(std::string_view text) override { file_.append(std::as_bytes(std::span{text})); }

 private:
  WritableFile& file_;
};

}  // namespace tavrix
