#include "cli/fields.h"

#include <cstdint>
#include <cstring>

namespace cli {

namespace {

using Size = std::uint32_t;  // In front of each text.

}  // namespace

std::string joinFields(const std::vector<std::string_view>& fields) {
  std::string bytes;
  for (const std::string_view field : fields) {
    const Size size = static_cast<Size>(field.size());
    bytes.append(reinterpret_cast<const char*>(&size), sizeof size).append(field, 0, size);
  }
  return bytes;
}

std::optional<std::vector<std::string>> splitFields(std::string_view bytes) {
  std::vector<std::string> fields;
  while (!bytes.empty()) {
    Size size = 0;
    if (bytes.size() < sizeof size) return {};
    std::memcpy(&size, bytes.data(), sizeof size);
    bytes.remove_prefix(sizeof size);
    if (bytes.size() < size) return {};
    fields.emplace_back(bytes.substr(0, size));
    bytes.remove_prefix(size);
  }
  return fields;
}

}  // namespace cli
