#pragma once

#include <plist/plist.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tavrix::simulator {

/// A dictionary in the format that phones exchange.
class PropertyList {
 public:
  PropertyList() : node_(plist_new_dict()) {}
  /// Returns the dictionary in a text; empty if the text is not a dictionary.
  static PropertyList parse(const std::string& text) {
    plist_t node = nullptr;
    plist_from_memory(text.data(), static_cast<std::uint32_t>(text.size()), &node);
    PropertyList list;
    if (plist_get_node_type(node) == PLIST_DICT) {
      list.node_.reset(node);
    } else {
      plist_free(node);
    }
    return list;
  }

  PropertyList& set(const char* key, std::string_view text) {
    return set(key, plist_new_string(std::string{text}.c_str()));
  }
  PropertyList& set(const char* key, const char* text) { return set(key, plist_new_string(text)); }
  PropertyList& set(const char* key, std::uint64_t number) {
    return set(key, plist_new_uint(number));
  }
  PropertyList& set(const char* key, bool value) {
    return set(key, plist_new_bool(static_cast<std::uint8_t>(value)));
  }
  PropertyList& setData(const char* key, const std::string& bytes) {
    return set(key, plist_new_data(bytes.data(), bytes.size()));
  }
  PropertyList& set(const char* key, const PropertyList& inner) {
    return set(key, plist_copy(inner.node_.get()));
  }
  /// Takes ownership of the node.
  PropertyList& set(const char* key, plist_t node) {
    plist_dict_set_item(node_.get(), key, node);
    return *this;
  }

  /// Returns the text of a key; empty if there is none.
  std::string text(const char* key) const {
    const plist_t node = plist_dict_get_item(node_.get(), key);
    if (node == nullptr || plist_get_node_type(node) != PLIST_STRING) return {};
    std::uint64_t length = 0;
    const char* const text = plist_get_string_ptr(node, &length);
    return {text, static_cast<std::size_t>(length)};
  }
  std::uint64_t number(const char* key) const {
    const plist_t node = plist_dict_get_item(node_.get(), key);
    std::uint64_t value = 0;
    if (node != nullptr && plist_get_node_type(node) == PLIST_UINT) {
      plist_get_uint_val(node, &value);
    }
    return value;
  }
  std::string data(const char* key) const {
    const plist_t node = plist_dict_get_item(node_.get(), key);
    if (node == nullptr || plist_get_node_type(node) != PLIST_DATA) return {};
    std::uint64_t length = 0;
    const char* const bytes = plist_get_data_ptr(node, &length);
    return {bytes, static_cast<std::size_t>(length)};
  }
  plist_t copy() const { return plist_copy(node_.get()); }

  std::string xml() const {
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node_.get(), &text, &length);
    std::string result{text, length};
    plist_to_xml_free(text);
    return result;
  }

 private:
  struct Free {
    void operator()(void* node) const { plist_free(node); }
  };
  std::unique_ptr<void, Free> node_;
};

}  // namespace tavrix::simulator
