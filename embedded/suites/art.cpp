// Art 16: making objects; Art Set 7: listing them.
#include <algorithm>
#include <cstring>

#include "embedded/suites/call.h"
#include "embedded/suites/tables.h"

namespace embedded {

using namespace hostapi;

namespace {

constexpr AIErr kTooDeepErr = fourCC("NEST");
constexpr AIErr kWrongPlaceErr = fourCC("~VAT");
// Groups inside one another, including the layer's own; the real host's limit is not known.
constexpr std::size_t kDeepestGroup = 100;

constexpr Function kNewArt{AIArtSuite::kId, "NewArt"};
constexpr Function kGetFirstArtOfLayer{AIArtSuite::kId, "GetFirstArtOfLayer"};
constexpr Function kNewArtSet{AIArtSetSuite::kId, "NewArtSet"};
constexpr Function kCountArtSet{AIArtSetSuite::kId, "CountArtSet"};
constexpr Function kIndexArtSet{AIArtSetSuite::kId, "IndexArtSet"};
constexpr Function kLayerArtSet{AIArtSetSuite::kId, "LayerArtSet"};

// ---- Art ----

struct Place {
  ArtNode* parent = nullptr;
  std::size_t index = 0;  // among the parent's children, bottom to top
};

Place besides(ArtNode& reference, bool above) {
  auto& siblings = reference.parent->children;
  const auto index = std::ranges::find(siblings, &reference) - siblings.begin();
  return {reference.parent, static_cast<std::size_t>(index) + (above ? 1 : 0)};
}

// Where an object goes by its order. "Above all" and "below all" refer to the current layer; the
// other orders need a reference: "inside" a group, "above" and "below" an object in a group. Where
// the result is an error, the place has no parent.
AIErr findPlace(Call& call, ArtNode* reference, std::int16_t order, Place& place) {
  ArtNode* all = call.host.documents.current()->currentLayer->group;
  switch (order) {
    case kPlaceAboveAll:
      place = {all, all->children.size()};
      return kNoErr;
    case kPlaceBelowAll:
      place = {all, 0};
      return kNoErr;
    case kPlaceInsideOnTop:
    case kPlaceInsideOnBottom:
      if (reference == nullptr) return call.badHandle("reference", nullptr);
      if (!reference->isGroup) return kWrongPlaceErr;
      place = {reference, order == kPlaceInsideOnTop ? reference->children.size() : 0};
      return kNoErr;
    case kPlaceAbove:
    case kPlaceBelow:
      if (reference == nullptr) return call.badHandle("reference", nullptr);
      if (reference->parent == nullptr) return kWrongPlaceErr;
      place = besides(*reference, order == kPlaceAbove);
      return kNoErr;
    case kPlaceDefault:
      return kNotImplementedErr;
    default:
      return kUnknownPaintOrderErr;
  }
}

// A real host has compound paths; this one does not.
AIErr checkType(std::int16_t type) {
  if (type == kPathArt || type == kGroupArt) return kNoErr;
  return type == kCompoundPathArt ? kNotImplementedErr : kUnknownArtTypeErr;
}

AIErr makeArt(Call& call, std::int16_t type, std::int16_t order, AIArtHandle handle,
              AIArtHandle* art) {
  Documents& documents = call.host.documents;
  ArtNode* reference = documents.find(handle);
  if (handle != nullptr && reference == nullptr) return call.badHandle("reference", handle);
  if (documents.current() == nullptr) return kNoDocumentErr;
  if (const AIErr code = checkType(type); code != kNoErr) return code;
  Place place;
  const AIErr code = findPlace(call, reference, order, place);
  if (place.parent == nullptr) return code;
  const LayerNode& layer = *place.parent->layer;
  if (!layer.editable || !layer.visible) return kUntouchableLayerErr;
  if (depthOf(*place.parent) + 1 >= kDeepestGroup) return kTooDeepErr;
  *art = documents.addArt(*place.parent, type == kGroupArt, place.index)->handle;
  return kNoErr;
}

AIErr newArt(std::int16_t type, std::int16_t paintOrder, AIArtHandle reference, AIArtHandle* art) {
  return answer(
      kNewArt,
      [&](Call& call) {
        call.in("type", type);
        call.in("paintOrder", paintOrder);
        call.inHandle("reference", reference);
        call.outHandle("art", art);
        if (type == kPathArt) call.concernsNextPath();
      },
      [&](Call& call) { return makeArt(call, type, paintOrder, reference, art); });
}

AIErr getFirstArtOfLayer(AILayerHandle layer, AIArtHandle* group) {
  return answer(
      kGetFirstArtOfLayer,
      [&](Call& call) {
        call.inHandle("layer", layer);
        call.outHandle("group", group);
      },
      [&](Call& call) {
        const DocumentNode* document = call.host.documents.current();
        if (document == nullptr) return kNoDocumentErr;
        const LayerNode* node =
            layer == nullptr ? document->currentLayer : call.host.documents.find(layer);
        if (node == nullptr) return call.badHandle("layer", layer);
        *group = node->group->handle;
        return kNoErr;
      });
}

// ---- Art Set ----

AIErr newArtSet(AIArtSet* set) {
  return answer(
      kNewArtSet, [&](Call& call) { call.outHandle("set", set); },
      [&](Call& call) {
        *set = call.host.documents.addSet()->handle;
        return kNoErr;
      });
}

// True in a host whose counts and indices have 64 bits.
bool hasWideNumbers(const Call& call) {
  return call.host.options.artSetNumbers == ArtSetNumbers::bits64;
}

AIErr countArtSet(AIArtSet set, std::uint64_t* count) {
  return answer(
      kCountArtSet,
      [&](Call& call) {
        call.inHandle("set", set);
        call.outLow32("count", count);
      },
      [&](Call& call) {
        const ArtSetNode* node = call.host.documents.find(set);
        if (node == nullptr) return call.badHandle("set", set);
        const std::uint64_t members = node->members.size();
        std::memcpy(count, &members, hasWideNumbers(call) ? 8 : 4);
        return kNoErr;
      });
}

// Only as many bits of the index are read as the host's indices have.
AIErr indexArtSet(AIArtSet set, std::uint64_t index, AIArtHandle* art) {
  const auto low = static_cast<std::uint32_t>(index);
  return answer(
      kIndexArtSet,
      [&](Call& call) {
        call.inHandle("set", set);
        call.in("index", low);
        call.outHandle("art", art);
      },
      [&](Call& call) {
        const ArtSetNode* node = call.host.documents.find(set);
        if (node == nullptr) return call.badHandle("set", set);
        const std::uint64_t place = hasWideNumbers(call) ? index : low;
        if (place >= node->members.size()) return kBadParameterErr;
        *art = node->members[static_cast<std::size_t>(place)]->handle;
        return kNoErr;
      });
}

AIErr layerArtSet(AILayerHandle layer, AIArtSet set) {
  return answer(
      kLayerArtSet,
      [&](Call& call) {
        call.inHandle("layer", layer);
        call.inHandle("set", set);
      },
      [&](Call& call) {
        const LayerNode* node = call.host.documents.find(layer);
        if (node == nullptr) return call.badHandle("layer", layer);
        ArtSetNode* members = call.host.documents.find(set);
        if (members == nullptr) return call.badHandle("set", set);
        members->members = objectsOf(*node);
        if (call.host.options.layerGroup == LayerGroup::counted) {
          members->members.insert(members->members.begin(), node->group);
        }
        return kNoErr;
      });
}

}  // namespace

AIArtSuite artTable() {
  auto table = tableOfMisuse<AIArtSuite>();
  table.NewArt = newArt;
  table.GetFirstArtOfLayer = getFirstArtOfLayer;
  return table;
}

AIArtSetSuite artSetTable() {
  auto table = tableOfMisuse<AIArtSetSuite>();
  table.NewArtSet = newArtSet;
  table.CountArtSet = countArtSet;
  table.IndexArtSet = indexArtSet;
  table.LayerArtSet = layerArtSet;
  return table;
}

}  // namespace embedded
