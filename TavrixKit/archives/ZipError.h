#pragma once

#include <exception>
#include <string>

namespace tavrix {

/// Thrown if an archive cannot be made or is not what it should be. Failures of the disk are
/// FileError.
class ZipError : public std::exception {
 public:
  enum class Kind {
    unsafeName,      ///< the name could lead outside the folder when it is unpacked, or is not
                     ///< UTF-8
    duplicateName,   ///< two entries of one name
    contentChanged,  ///< an entry's content has another size than announced
    unreadable,      ///< the archive cannot be read back
    mismatch,        ///< the content read back differs from what was put in
  };

  /// `name` is the entry's name, or empty if the error concerns the whole archive.
  ZipError(Kind kind, std::string name) : kind_(kind), name_(std::move(name)) {}
  Kind kind() const { return kind_; }
  const std::string& name() const { return name_; }
  const char* what() const noexcept override { return "ZipError"; }

 private:
  Kind kind_;
  std::string name_;
};

}  // namespace tavrix
