#include "platform/PropertyList.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>

namespace harmony::platform {

namespace {

struct PlistDeleter {
  void operator()(void* node) const { plist_free(static_cast<plist_t>(node)); }
};
using PlistPtr = std::unique_ptr<void, PlistDeleter>;

plist_t ToNode(const GChPropertyList& value) {
  switch (value.kind()) {
    case GChPropertyList::Kind::Integer:
      // Negative values travel as their two's complement; the XML writer prints them signed.
      return plist_new_uint(static_cast<uint64_t>(value.integerValue()));
    case GChPropertyList::Kind::String:
      return plist_new_string(value.stringValue().c_str());
    case GChPropertyList::Kind::Array: {
      plist_t array = plist_new_array();
      for (const auto& item : value.items()) plist_array_append_item(array, ToNode(item));
      return array;
    }
    case GChPropertyList::Kind::Dictionary: {
      plist_t dict = plist_new_dict();
      for (size_t i = 0; i < value.keys().size(); ++i) {
        plist_dict_set_item(dict, value.keys()[i].c_str(), ToNode(value.items()[i]));
      }
      return dict;
    }
  }
  return plist_new_dict();
}

std::optional<GChPropertyList> FromNode(plist_t node, int depth) {
  if (node == nullptr || depth > 64) return std::nullopt;
  switch (plist_get_node_type(node)) {
    case PLIST_UINT: {
      uint64_t value = 0;
      plist_get_uint_val(node, &value);
      return GChPropertyList::Integer(static_cast<int64_t>(value));
    }
    case PLIST_BOOLEAN: {
      uint8_t value = 0;
      plist_get_bool_val(node, &value);
      return GChPropertyList::Integer(value != 0 ? 1 : 0);
    }
    case PLIST_STRING: {
      uint64_t length = 0;
      const char* text = plist_get_string_ptr(node, &length);
      return GChPropertyList::String(text != nullptr ? std::string(text, length) : std::string());
    }
    case PLIST_ARRAY: {
      GChPropertyList array = GChPropertyList::Array();
      const uint32_t count = plist_array_get_size(node);
      for (uint32_t i = 0; i < count; ++i) {
        auto item = FromNode(plist_array_get_item(node, i), depth + 1);
        if (!item) return std::nullopt;
        array.append(std::move(*item));
      }
      return array;
    }
    case PLIST_DICT: {
      GChPropertyList dict = GChPropertyList::Dictionary();
      plist_dict_iter iter = nullptr;
      plist_dict_new_iter(node, &iter);
      bool ok = true;
      for (;;) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iter, &key, &item);
        if (item == nullptr) {
          std::free(key);
          break;
        }
        auto value = FromNode(item, depth + 1);
        if (value && key != nullptr) dict.set(key, std::move(*value));
        std::free(key);
        if (!value) {
          ok = false;
          break;
        }
      }
      std::free(iter);
      if (!ok) return std::nullopt;
      return dict;
    }
    default:
      return std::nullopt;
  }
}

}  // namespace

std::string PropertyListToXml(const GChPropertyList& plist) {
  PlistPtr node(ToNode(plist));
  char* xml = nullptr;
  uint32_t length = 0;
  plist_to_xml(static_cast<plist_t>(node.get()), &xml, &length);
  std::string text = xml != nullptr ? std::string(xml, length) : std::string();
  plist_to_xml_free(xml);
  return text;
}

std::optional<GChPropertyList> PropertyListFromBytes(const char* bytes, size_t length) {
  if (bytes == nullptr || length == 0 || length > std::numeric_limits<uint32_t>::max()) {
    return std::nullopt;
  }
  plist_t raw = nullptr;
  plist_from_memory(bytes, static_cast<uint32_t>(length), &raw);
  PlistPtr node(raw);
  if (!node) return std::nullopt;
  return FromNode(raw, 0);
}

}  // namespace harmony::platform
