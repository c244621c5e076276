#include "translate/annotations.h"

#include <utility>

namespace translate {

std::string condensed(std::string_view text) {
  std::string result;
  for (const char c : text) {
    const bool isWhite = c == ' ' || (c >= '\t' && c <= '\r');
    if (!isWhite) {
      result += c;
    } else if (!result.empty() && result.back() != ' ') {
      result += ' ';
    }
  }
  if (result.ends_with(' ')) result.pop_back();
  return result;
}

std::map<std::string, std::string> annotationsIn(const InkTree& tree, InkTree::Index node) {
  std::map<std::string, std::string> found;
  tree.eachChild(node, [&](InkTree::Index child) {
    if (tree.tag(child) != Tag::annotation) return;
    std::string type = condensed(tree.attribute(child, Attribute::type).value_or(""));
    if (type.empty()) type = "annotation";
    std::string text = condensed(tree.text(child));
    if (!text.empty()) found.try_emplace(std::move(type), std::move(text));
  });
  return found;
}

std::string nameOfGroup(const InkTree& tree, InkTree::Index group,
                        const std::map<std::string, std::string>& annotations) {
  for (const char* type : {"name", "title", "label", "truth", "annotation"}) {
    const auto named = annotations.find(type);
    if (named != annotations.end()) return named->second;
  }
  return condensed(tree.attribute(group, Attribute::id).value_or(""));
}

std::uint64_t countAnnotations(const InkTree& tree) {
  std::uint64_t count = 0;
  for (InkTree::Index node = 0; node < tree.size(); ++node) {
    if (tree.tag(node) == Tag::annotation && !trimmed(tree.text(node)).empty()) ++count;
  }
  return count;
}

}  // namespace translate
