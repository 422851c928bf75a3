#pragma once

#include <exception>
#include <string>

namespace tavrix {

enum class FileOperation {
  open,
  create,
  read,
  write,
  sync,
  close,
  rename,
  remove,
  makeFolder,
  status,
  list
};

/// A failed operation on a file: the operation, the path and the system's error code (errno).
class FileError : public std::exception {
 public:
  FileError(FileOperation operation, std::string path, int code)
      : operation_(operation), path_(std::move(path)), code_(code) {}

  FileOperation operation() const { return operation_; }
  const std::string& path() const { return path_; }
  int code() const { return code_; }
  const char* what() const noexcept override { return "FileError"; }

 private:
  FileOperation operation_;
  std::string path_;
  int code_;
};

}  // namespace tavrix
