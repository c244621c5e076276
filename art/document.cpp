#include "art/document.h"

namespace art {

namespace {

std::size_t countPaths(const std::vector<Object>& objects) {
  std::size_t count = 0;
  for (const Object& object : objects) {
    const Group* group = std::get_if<Group>(&object.value);
    count += group != nullptr ? countPaths(group->art) : 1;
  }
  return count;
}

}  // namespace

std::size_t countPaths(const Document& document) {
  std::size_t count = 0;
  for (const Layer& layer : document.layers)
    count += countPaths(layer.art);
  return count;
}

}  // namespace art
