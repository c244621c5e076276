// Layer 12: the layers of the current document; index 0 is the topmost.
#include <algorithm>

#include "embedded/suites/call.h"
#include "embedded/suites/tables.h"

namespace embedded {

using namespace hostapi;

namespace {

constexpr Function kCountLayers{AILayerSuite::kId, "CountLayers"};
constexpr Function kGetNthLayer{AILayerSuite::kId, "GetNthLayer"};
constexpr Function kSetCurrentLayer{AILayerSuite::kId, "SetCurrentLayer"};
constexpr Function kGetFirstLayer{AILayerSuite::kId, "GetFirstLayer"};
constexpr Function kInsertLayer{AILayerSuite::kId, "InsertLayer"};
constexpr Function kSetLayerEditable{AILayerSuite::kId, "SetLayerEditable"};
constexpr Function kLayerHasArt{AILayerSuite::kId, "LayerHasArt"};

AIErr countLayers(std::int32_t* count) {
  return answer(
      kCountLayers, [&](Call& call) { call.out("count", count); },
      [&](Call& call) {
        const DocumentNode* document = call.host.documents.current();
        *count = document == nullptr ? 0 : static_cast<std::int32_t>(document->layers.size());
        return kNoErr;
      });
}

AIErr getNthLayer(std::int32_t n, AILayerHandle* layer) {
  return answer(
      kGetNthLayer,
      [&](Call& call) {
        call.in("n", n);
        call.outHandle("layer", layer);
      },
      [&](Call& call) {
        const DocumentNode* document = call.host.documents.current();
        if (document == nullptr) return kNoDocumentErr;
        const auto& layers = document->layers;
        if (n < 0 || static_cast<std::size_t>(n) >= layers.size()) return kBadParameterErr;
        *layer = layers[layers.size() - 1 - static_cast<std::size_t>(n)]->handle;
        return kNoErr;
      });
}

AIErr setCurrentLayer(AILayerHandle layer) {
  return answer(
      kSetCurrentLayer, [&](Call& call) { call.inHandle("layer", layer); },
      [&](Call& call) {
        LayerNode* node = call.host.documents.find(layer);
        if (node == nullptr) return call.badHandle("layer", layer);
        node->document->currentLayer = node;
        return kNoErr;
      });
}

AIErr getFirstLayer(AILayerHandle* layer) {
  return answer(
      kGetFirstLayer, [&](Call& call) { call.outHandle("layer", layer); },
      [&](Call& call) {
        const DocumentNode* document = call.host.documents.current();
        if (document == nullptr) return kNoDocumentErr;
        *layer = document->layers.back()->handle;
        return kNoErr;
      });
}

std::size_t placeOf(const DocumentNode& document, const LayerNode* layer) {
  const auto found = std::ranges::find(document.layers, layer);
  return static_cast<std::size_t>(found - document.layers.begin());
}

// "Above" and "below" need a reference, which is searched for among all layers; "above all" and
// "below all" need none and take the same time however many layers there are. Sublayers, which
// "inside" would make, are not offered.
AIErr insert(Call& call, DocumentNode& document, AILayerHandle reference, std::int16_t order,
             AILayerHandle* layer) {
  const LayerNode* beside = call.host.documents.find(reference);
  if (reference != nullptr && beside == nullptr) return call.badHandle("reference", reference);
  std::size_t place = 0;
  switch (order) {
    case kPlaceAboveAll:
      place = document.layers.size();
      break;
    case kPlaceBelowAll:
      break;
    case kPlaceAbove:
    case kPlaceBelow:
      if (beside == nullptr) return call.badHandle("reference", reference);
      place = placeOf(document, beside) + (order == kPlaceAbove ? 1 : 0);
      break;
    case kPlaceDefault:
    case kPlaceInsideOnTop:
    case kPlaceInsideOnBottom:
      return kNotImplementedErr;
    default:
      return kUnknownPaintOrderErr;
  }
  *layer = call.host.documents.addLayer(document, place)->handle;
  return kNoErr;
}

AIErr insertLayer(AILayerHandle reference, std::int16_t paintOrder, AILayerHandle* layer) {
  return answer(
      kInsertLayer,
      [&](Call& call) {
        call.inHandle("reference", reference);
        call.in("paintOrder", paintOrder);
        call.outHandle("layer", layer);
      },
      [&](Call& call) {
        DocumentNode* document = call.host.documents.current();
        if (document == nullptr) return kNoDocumentErr;
        return insert(call, *document, reference, paintOrder, layer);
      });
}

AIErr setLayerEditable(AILayerHandle layer, AIBoolean editable) {
  return answer(
      kSetLayerEditable,
      [&](Call& call) {
        call.inHandle("layer", layer);
        call.inBoolean("editable", editable);
      },
      [&](Call& call) {
        LayerNode* node = call.host.documents.find(layer);
        if (node == nullptr) return call.badHandle("layer", layer);
        node->editable = editable != 0;
        return kNoErr;
      });
}

AIErr layerHasArt(AILayerHandle layer, AIBoolean* hasAny) {
  return answer(
      kLayerHasArt,
      [&](Call& call) {
        call.inHandle("layer", layer);
        call.outBoolean("hasArt", hasAny);
      },
      [&](Call& call) {
        const LayerNode* node = call.host.documents.find(layer);
        if (node == nullptr) return call.badHandle("layer", layer);
        *hasAny = hasArt(*node) ? 1 : 0;
        return kNoErr;
      });
}

}  // namespace

AILayerSuite layerTable() {
  auto table = tableOfMisuse<AILayerSuite>();
  table.CountLayers = countLayers;
  table.GetNthLayer = getNthLayer;
  table.SetCurrentLayer = setCurrentLayer;
  table.GetFirstLayer = getFirstLayer;
  table.InsertLayer = insertLayer;
  table.SetLayerEditable = setLayerEditable;
  table.LayerHasArt = layerHasArt;
  return table;
}

}  // namespace embedded
