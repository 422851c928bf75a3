#pragma once

#include <algorithm>
#include <array>
#include <cerrno>
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

/// Returns true for the codes with which a volume fails when its disk or its server is gone.
inline bool meansLostVolume(int code) {
  constexpr std::array codes{EIO,        ENODEV,    ENXIO,    ESTALE,       ENOTCONN, ECONNABORTED,
                             ECONNRESET, EHOSTDOWN, ENETDOWN, EHOSTUNREACH, ETIMEDOUT};
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

}  // namespace tavrix
