#include "translate/ink_names.h"

#include <algorithm>
#include <utility>

namespace translate {
namespace {

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::pair<std::string_view, std::string_view> split(std::string_view name) {
  const std::size_t colon = name.find(':');
  if (colon == std::string_view::npos) return {"", name};
  return {name.substr(0, colon), name.substr(colon + 1)};
}

// Drafts of the recommendation and some programs write it a little differently.
bool isInkNamespace(std::string_view uri) {
  return uri.empty() || lowerCase(uri).find("inkml") != std::string::npos;
}

}  // namespace

std::string lowerCase(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), lower);
  return result;
}

std::string_view localName(std::string_view name) {
  return split(name).second;
}

std::string_view InkNames::enter(std::string_view name, const char* const* attributes) {
  ++depth_;
  for (; *attributes != nullptr; attributes += 2) {
    const std::string_view declared = attributes[0];
    if (!declared.starts_with("xmlns")) continue;
    if (declared.size() == 5) {
      declare("", attributes[1]);
    } else if (declared[5] == ':') {
      declare(declared.substr(6), attributes[1]);
    }
  }
  const auto [prefix, local] = split(name);
  if (depth_ == 1) rootPrefix_ = prefix;
  return isInk(prefix) ? lowered(local) : std::string_view();
}

void InkNames::leave() {
  while (!bindings_.empty() && bindings_.back().depth == depth_)
    bindings_.pop_back();
  --depth_;
}

std::string_view InkNames::attribute(std::string_view name) {
  const auto [prefix, local] = split(name);
  if (name == "xml:id") return "id";
  return prefix.empty() || isInk(prefix) ? lowered(local) : std::string_view();
}

void InkNames::declare(std::string_view prefix, std::string_view uri) {
  bindings_.push_back({std::string(prefix), isInkNamespace(uri), depth_});
}

bool InkNames::isInk(std::string_view prefix) const {
  for (auto binding = bindings_.rbegin(); binding != bindings_.rend(); ++binding) {
    if (binding->prefix == prefix) return binding->isInk;
  }
  return prefix == rootPrefix_ || prefix.empty();
}

std::string_view InkNames::lowered(std::string_view name) {
  buffer_.resize(name.size());
  std::ranges::transform(name, buffer_.begin(), lower);
  return buffer_;
}

}  // namespace translate
