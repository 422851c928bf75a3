#pragma once

#include <exception>
#include <string>

namespace tavrix {

/// Why an archive cannot be made, or is not what it should be. Failures of the disk are FileError.
class ZipError : public std::exception {
 public:
  enum class Kind {
    unsafeName,      ///< an entry's name could lead elsewhere when it is unpacked, or is no UTF-8
    duplicateName,   ///< two entries of one name
    contentChanged,  ///< an entry's content has another size than was told
    unreadable,      ///< the archive cannot be read back
    mismatch,        ///< what was read back is not what was put in
  };

  /// `name` is the entry's name, or empty when the archive as a whole is meant.
  ZipError(Kind kind, std::string name) : kind_(kind), name_(std::move(name)) {}
  Kind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  const char* what() const noexcept override { return "ZipError"; }

 private:
  Kind kind_;
  std::string name_;
};

}  // namespace tavrix
