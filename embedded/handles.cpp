#include "embedded/handles.h"

#include <array>

namespace embedded {

std::string handleName(const void* handle) {
  constexpr std::array kNames{"plugin", "access", "document", "layer",    "group",  "path",
                              "style",  "set",    "format",   "notifier", "string", "filePath"};
  static_assert(kNames.size() == static_cast<std::size_t>(HandleKind::filePath) + 1);
  const std::optional<HandleNumber> found = fromHandle(handle);
  if (!found) return {};
  return kNames[static_cast<std::size_t>(found->kind)] + (":" + std::to_string(found->number));
}

}  // namespace embedded
