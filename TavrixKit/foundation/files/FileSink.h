#pragma once

#include "foundation/files/Folder.h"
#include "foundation/json/JsonWriter.h"

namespace tavrix {

/// Hands text to a file as it comes. The file outlives it; write() throws what the file throws.
class FileSink : public TextSink {
 public:
  explicit FileSink(WritableFile& file) : file_(file) {}
  void write(std::string_view text) override { file_.append(std::as_bytes(std::span{text})); }

 private:
  WritableFile& file_;
};

}  // namespace tavrix
