#include "embedded/documents.h"

#include <algorithm>
#include <utility>

namespace embedded {

using namespace hostapi;

namespace {

// A4, in points.
constexpr float kPageWidth = 595.276F;
constexpr float kPageHeight = 841.89F;
constexpr float kOutputResolution = 800.0F;  // dots per inch

template <class Node>
Node* at(std::deque<Node>& nodes, std::size_t number) {
  if (number == 0 || number > nodes.size()) return nullptr;
  return &nodes[number - 1];
}

}  // namespace

DocumentNode* Documents::makeCurrent() {
  closeCurrent();
  DocumentNode& document = documents_.emplace_back();
  document.handle = toHandle<AIDocumentHandle>(HandleKind::document, documents_.size());
  document.setup = {.width = kPageWidth,
                    .height = kPageHeight,
                    .showPlacedImages = 1,
                    .outputResolution = kOutputResolution,
                    .splitLongPaths = 0,
                    .useDefaultScreen = 0,
                    .compatibleGradients = 0,
                    .printTiles = 0,
                    .tileFullPages = 0};
  document.page = {.left = 0, .bottom = 0, .right = kPageWidth, .top = kPageHeight};
  document.pathsBefore = paths_.size();
  document.currentLayer = addLayer(document, 0);
  current_ = &document;
  return current_;
}

DocumentNode* Documents::makeLibrary(const std::vector<art::Style>& styles) {
  DocumentNode& document = documents_.emplace_back();
  document.handle = toHandle<AIDocumentHandle>(HandleKind::document, documents_.size());
  for (const art::Style& style : styles)
    addStyle(document, style);
  return &document;
}

void Documents::closeCurrent() {
  if (current_ != nullptr) current_->closed = true;
  current_ = nullptr;
}

LayerNode* Documents::addLayer(DocumentNode& document, std::size_t place) {
  LayerNode& layer = layers_.emplace_back();
  layer.handle = toHandle<AILayerHandle>(HandleKind::layer, layers_.size());
  layer.document = &document;
  layer.name = "Layer " + std::to_string(++document.layersMade);
  layer.group = makeArt(layer, nullptr, true);
  document.layers.insert(document.layers.begin() + static_cast<std::ptrdiff_t>(place), &layer);
  return &layer;
}

ArtNode* Documents::makeArt(LayerNode& layer, ArtNode* parent, bool isGroup) {
  std::deque<ArtNode>& nodes = isGroup ? groups_ : paths_;
  ArtNode& node = nodes.emplace_back();
  node.handle = toHandle<AIArtHandle>(isGroup ? HandleKind::group : HandleKind::path, nodes.size());
  node.layer = &layer;
  node.parent = parent;
  node.isGroup = isGroup;
  return &node;
}

ArtNode* Documents::addArt(ArtNode& parent, bool isGroup, std::size_t place) {
  ArtNode* node = makeArt(*parent.layer, &parent, isGroup);
  parent.children.insert(parent.children.begin() + static_cast<std::ptrdiff_t>(place), node);
  return node;
}

StyleNode* Documents::addStyle(DocumentNode& document, art::Style style) {
  styles_.push_back({toHandle<AIArtStyleHandle>(HandleKind::style, styles_.size() + 1), &document,
                     std::move(style)});
  document.styles.push_back(&styles_.back());
  return &styles_.back();
}

ArtSetNode* Documents::addSet() {
  sets_.push_back({toHandle<AIArtSet>(HandleKind::set, sets_.size() + 1), {}});
  return &sets_.back();
}

DocumentNode* Documents::find(AIDocumentHandle handle) {
  DocumentNode* node = at(documents_, numberOf(handle, HandleKind::document));
  return node == nullptr || node->closed ? nullptr : node;
}

LayerNode* Documents::find(AILayerHandle handle) {
  LayerNode* node = at(layers_, numberOf(handle, HandleKind::layer));
  return node == nullptr || node->document->closed ? nullptr : node;
}

ArtNode* Documents::find(AIArtHandle handle) {
  ArtNode* node = at(paths_, numberOf(handle, HandleKind::path));
  if (node == nullptr) node = at(groups_, numberOf(handle, HandleKind::group));
  return node == nullptr || node->layer->document->closed ? nullptr : node;
}

StyleNode* Documents::find(AIArtStyleHandle handle) {
  StyleNode* node = at(styles_, numberOf(handle, HandleKind::style));
  return node == nullptr || node->document->closed ? nullptr : node;
}

ArtSetNode* Documents::find(AIArtSet handle) {
  return at(sets_, numberOf(handle, HandleKind::set));
}

StyleNode* findStyle(const DocumentNode& document, const std::string& name) {
  const auto found = std::ranges::find_if(
      document.styles, [&](const StyleNode* node) { return node->style.name == name; });
  return found == document.styles.end() ? nullptr : *found;
}

bool hasArt(const LayerNode& layer) {
  return !layer.group->children.empty();
}

std::size_t depthOf(const ArtNode& node) {
  std::size_t depth = 0;
  for (const ArtNode* group = node.parent; group != nullptr; group = group->parent)
    ++depth;
  return depth;
}

namespace {

void collect(const ArtNode& group, std::vector<ArtNode*>& objects) {
  for (auto child = group.children.rbegin(); child != group.children.rend(); ++child) {
    objects.push_back(*child);
    collect(**child, objects);
  }
}

std::optional<std::size_t> styleIndex(const DocumentNode& document, const StyleNode* style) {
  const auto found = std::ranges::find(document.styles, style);
  if (found == document.styles.end()) return std::nullopt;
  return static_cast<std::size_t>(found - document.styles.begin());
}

std::vector<art::Object> plainObjects(const DocumentNode& document, ArtNode& group, bool take) {
  std::vector<art::Object> objects;
  objects.reserve(group.children.size());
  for (ArtNode* node : group.children) {
    art::Object& object = objects.emplace_back();
    const std::optional<std::size_t> style = styleIndex(document, node->style);
    if (node->isGroup) {
      object.value = art::Group{plainObjects(document, *node, take), style};
      continue;
    }
    auto& path = std::get<art::Path>(object.value);
    if (take) {
      path = std::move(node->path);
    } else {
      path = node->path;
    }
    path.style = style;
  }
  return objects;
}

}  // namespace

std::vector<ArtNode*> objectsOf(const LayerNode& layer) {
  std::vector<ArtNode*> objects;
  collect(*layer.group, objects);
  return objects;
}

void setPageSize(DocumentNode& document, float width, float height) {
  const double centreH = (double{document.page.left} + double{document.page.right}) / 2;
  const double centreV = (double{document.page.bottom} + double{document.page.top}) / 2;
  document.page = {.left = static_cast<float>(centreH - double{width} / 2),
                   .bottom = static_cast<float>(centreV - double{height} / 2),
                   .right = static_cast<float>(centreH + double{width} / 2),
                   .top = static_cast<float>(centreV + double{height} / 2)};
  document.setup.width = width;
  document.setup.height = height;
}

art::Document plainDocument(DocumentNode& document, bool takePaths) {
  art::Document plain;
  plain.width = document.setup.width;
  plain.height = document.setup.height;
  plain.rulerOrigin = document.rulerOrigin;
  plain.page = document.page;
  for (const LayerNode* layer : document.layers) {
    plain.layers.push_back({layer->name, layer->editable, layer->visible,
                            plainObjects(document, *layer->group, takePaths)});
  }
  for (const StyleNode* style : document.styles)
    plain.styles.push_back(style->style);
  return plain;
}

}  // namespace embedded
