// The documents of a host, as nodes that handles stand for.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "art/document.h"
#include "embedded/handles.h"
#include "hostapi/ai_document_suite.h"
#include "hostapi/types.h"

namespace embedded {

struct DocumentNode;
struct LayerNode;

struct StyleNode {
  hostapi::AIArtStyleHandle handle;
  DocumentNode* document;
  art::Style style;
};

/// A path, a group, or a layer's own group.
struct ArtNode {
  hostapi::AIArtHandle handle;
  LayerNode* layer;
  ArtNode* parent;  ///< null for a layer's own group
  bool isGroup;
  art::Path path;
  std::vector<ArtNode*> children;  ///< bottom to top
  StyleNode* style = nullptr;
};

struct LayerNode {
  hostapi::AILayerHandle handle;
  DocumentNode* document;
  std::string name;
  bool editable = true;
  bool visible = true;
  ArtNode* group = nullptr;
};

struct DocumentNode {
  hostapi::AIDocumentHandle handle;
  bool closed = false;
  hostapi::AIDocumentSetup setup{};
  bool setupAsked = false;
  art::Point rulerOrigin;
  art::Rect page;
  std::deque<LayerNode*> layers;  ///< bottom to top; grows at both ends
  LayerNode* currentLayer = nullptr;
  std::size_t layersMade = 0;
  std::size_t pathsBefore = 0;  ///< paths that the host held when it was made
  std::vector<StyleNode*> styles;
};

struct ArtSetNode {
  hostapi::AIArtSet handle;
  std::vector<ArtNode*> members;
};

/// Owns all documents and everything in them. Nothing is freed before the host is destroyed; the
/// handles of a closed document are no longer valid.
class Documents {
 public:
  /// A new page with one layer; it closes and replaces the current document.
  DocumentNode* makeCurrent();
  /// A document of styles only, never the current one.
  DocumentNode* makeLibrary(const std::vector<art::Style>& styles);
  void closeCurrent();
  DocumentNode* current() const { return current_; }

  LayerNode* addLayer(DocumentNode& document, std::size_t place);
  /// Inside `parent`, which is a group; place 0 is the bottom.
  ArtNode* addArt(ArtNode& parent, bool isGroup, std::size_t place);
  StyleNode* addStyle(DocumentNode& document, art::Style style);
  ArtSetNode* addSet();
  std::size_t pathsMade() const { return paths_.size(); }

  // What a handle stands for; null for a handle that is null, unknown, or of a closed document.
  DocumentNode* find(hostapi::AIDocumentHandle handle);
  LayerNode* find(hostapi::AILayerHandle handle);
  ArtNode* find(hostapi::AIArtHandle handle);
  StyleNode* find(hostapi::AIArtStyleHandle handle);
  ArtSetNode* find(hostapi::AIArtSet handle);

 private:
  ArtNode* makeArt(LayerNode& layer, ArtNode* parent, bool isGroup);

  DocumentNode* current_ = nullptr;
  // By the number of their handles; a deque keeps its elements in place.
  std::deque<DocumentNode> documents_;
  std::deque<LayerNode> layers_;
  std::deque<ArtNode> groups_;
  std::deque<ArtNode> paths_;
  std::deque<StyleNode> styles_;
  std::deque<ArtSetNode> sets_;
};

/// The style of that name in a document; null when there is none.
StyleNode* findStyle(const DocumentNode& document, const std::string& name);

/// True when the layer's own group is not empty.
bool hasArt(const LayerNode& layer);

/// The number of groups around `node`, including the layer's own.
std::size_t depthOf(const ArtNode& node);

/// Every object of the layer except its own group: topmost first, a group before its children.
std::vector<ArtNode*> objectsOf(const LayerNode& layer);

/// Sets width and height and keeps the centre of the page: each edge is computed in double from the
/// single-precision numbers and rounded once.
void setPageSize(DocumentNode& document, float width, float height);

/// The document as plain values. With `takePaths` the paths are moved out, leaving the nodes empty.
art::Document plainDocument(DocumentNode& document, bool takePaths);

}  // namespace embedded
