#pragma once

#include <cstdint>
#include <vector>

namespace tavrix {

/// The check marks of folders, by the numbers of their keys (see FolderKeys). A folder that the
/// user has never touched is checked. The marks are apart from the folders, so that a folder which
/// is not displayed for a while keeps its mark.
class CheckMarks {
 public:
  bool isIncluded(std::uint32_t key) const { return !has(excluded_, key); }
  void set(std::uint32_t key, bool isIncluded) {
    put(excluded_, key, !isIncluded);
    put(selected_, key, isIncluded);
  }
  /// Forgets which folders the user has checked explicitly. Unchecked folders stay unchecked.
  void forgetSelected() { selected_.clear(); }

  /// Return the keys that the user has explicitly checked or unchecked, in ascending order.
  std::vector<std::uint32_t> selected() const { return keysIn(selected_); }
  std::vector<std::uint32_t> excluded() const { return keysIn(excluded_); }

  friend bool operator==(const CheckMarks&, const CheckMarks&) = default;

 private:
  static bool has(const std::vector<bool>& marks, std::uint32_t key) {
    return key < marks.size() && marks[key];
  }
  static void put(std::vector<bool>& marks, std::uint32_t key, bool is) {
    if (key >= marks.size()) marks.resize(key + 1);
    marks[key] = is;
  }
  static std::vector<std::uint32_t> keysIn(const std::vector<bool>& marks) {
    std::vector<std::uint32_t> keys;
    for (std::uint32_t key = 0; key < marks.size(); ++key) {
      if (marks[key]) keys.push_back(key);
    }
    return keys;
  }

  std::vector<bool> selected_;
  std::vector<bool> excluded_;
};

}  // namespace tavrix
