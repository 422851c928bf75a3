#pragma once

#include <absl/container/flat_hash_map.h>
#include <absl/container/flat_hash_set.h>

#include <functional>
#include <string>
#include <string_view>

namespace tavrix {

/// A hash that allows lookups by std::string_view in containers of std::string, without a copy.
struct StringHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const {
    return absl::Hash<std::string_view>{}(text);
  }
};

template <typename Value>
using StringMap = absl::flat_hash_map<std::string, Value, StringHash, std::equal_to<>>;
/// Its keys refer to texts that are kept elsewhere.
template <typename Value>
using StringViewMap = absl::flat_hash_map<std::string_view, Value>;
using StringSet = absl::flat_hash_set<std::string, StringHash, std::equal_to<>>;

}  // namespace tavrix
