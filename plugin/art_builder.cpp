// From an ink document to the host's art.
#include <cstdio>

#include "hostapi/ai_art_set_suite.h"
#include "hostapi/ai_art_style_suite.h"
#include "hostapi/ai_art_suite.h"
#include "hostapi/ai_layer_suite.h"
#include "platform/debug_output.h"
#include "plugin/error.h"
#include "plugin/kvoexportfileplugin.h"
#include "plugin/unicode_string.h"

using namespace hostapi;

namespace {

constexpr char kNamedStyle[] = "kvoaiexportset";

// While paths are built the host's code is thrown as a plain integer, not as ai::Error: the host is
// then answered 'CANT', whatever the code was.
void throwPlainIfFailed(AIErr code) {
  if (code != kNoErr) throw code;  // NOLINT: a plain integer is what is thrown here
}

// For each layer the host is asked for the number of layers, although nothing uses it.
void countHostLayers() {
  std::int32_t count = 0;
  call(&AILayerSuite::CountLayers, &count);
}

void drawInto(AILayerHandle layer) {
  call(&AILayerSuite::SetCurrentLayer, layer);
  ai::throwIfFailed(call(&AILayerSuite::SetLayerEditable, layer, AIBoolean{1}));
}

AIArtHandle newPath(AILayerHandle layer) {
  AIArtHandle group = nullptr;
  AIArtHandle path = nullptr;
  if (call(&AIArtSuite::GetFirstArtOfLayer, layer, &group) == kNoErr) {
    call(&AIArtSuite::NewArt, kPathArt, kPlaceInsideOnTop, group, &path);
  } else {
    throwPlainIfFailed(call(&AIArtSuite::NewArt, kPathArt, kPlaceAboveAll, nullptr, &path));
  }
  return path;
}

std::uint64_t countArt(AIArtSet set, AIErr& result) {
  std::uint64_t count = 0;
  result = call(&AIArtSetSuite::CountArtSet, set, &count);
  return count;
}

// Gives every object of the layer the style; result becomes the code of the last call that counts.
void styleLayer(AILayerHandle layer, AIArtStyleHandle style, AIErr& result) {
  AIArtSet set = nullptr;
  call(&AIArtSetSuite::NewArtSet, &set);
  call(&AIArtSetSuite::LayerArtSet, layer, set);
  const std::uint64_t count = countArt(set, result);
  for (std::uint64_t index = 0; index < count; ++index) {
    AIArtHandle art = nullptr;
    call(&AIArtSetSuite::IndexArtSet, set, index, &art);
    result = call(&AIArtStyleSuite::SetArtStyle, art, style);
  }
}

}  // namespace

void kvoexportfileplugin::buildArt(const Orvo::SharedRef<Orvo::Document>& ink) {
  const ai::UnicodeString styleName(kNamedStyle);
  namedStyle = nullptr;
  call(&AIArtStyleSuite::AddNamedStyle, brushStyle, styleName.body(), AIBoolean{1}, &namedStyle);

  const Orvo::Document document = *ink;
  takeBounds(document);
  setupPage();
  std::printf("there are %zu layers in this document\n", document.size());

  const PageMap map(inkBounds, documentSetup);
  AILayerHandle layer = firstHostLayer();
  bool isFirst = true;
  for (const Orvo::Layer& inkLayer : document) {
    if (!isFirst) layer = newHostLayer();
    isFirst = false;
    for (const Orvo::Stroke& stroke : inkLayer) {
      if (stroke.size() >= 2) buildStrokePath(stroke, layer, map);
    }
  }

  const AIErr result = applyArtStyle();
  if (result == kNoErr) return;
  platform::debugOutput(L"SetArtStyle failed ");
  throw ai::Error(result);
}

void kvoexportfileplugin::takeBounds(const Orvo::Document& ink) {
  inkBounds = ink.bounds();
  const Orvo::Point& topLeft = inkBounds.minCorner.value;
  const Orvo::Point& bottomRight = inkBounds.maxCorner.value;
  inkWidth = static_cast<float>(bottomRight.x.value - topLeft.x.value);
  inkHeight = static_cast<float>(bottomRight.y.value - topLeft.y.value);
}

void kvoexportfileplugin::setupPage() {
  const AIErr result = setupCalls_.get(documentSetup);
  documentSetup.width = inkWidth * kInkToPoints;
  documentSetup.height = inkHeight * kInkToPoints;
  ai::throwIfFailed(result);
  const AIRealPoint origin{0, 0};
  ai::throwIfFailed(call(&AIDocumentSuite::SetDocumentRulerOrigin, &origin));
  ai::throwIfFailed(setupCalls_.set(documentSetup));
}

// The only layer of a new document, which takes the first ink layer.
AILayerHandle kvoexportfileplugin::firstHostLayer() {
  AILayerHandle layer = nullptr;
  countHostLayers();
  call(&AILayerSuite::GetFirstLayer, &layer);
  drawInto(layer);
  return layer;
}

AILayerHandle kvoexportfileplugin::newHostLayer() {
  AILayerHandle layer = nullptr;
  countHostLayers();
  ai::throwIfFailed(call(&AILayerSuite::InsertLayer, nullptr, kPlaceAboveAll, &layer));
  drawInto(layer);
  return layer;
}

// An open path of straight pieces from point to point, with the pressure as tablet data. The
// segment count is truncated to the host's 16 bits and set twice.
void kvoexportfileplugin::buildStrokePath(const Orvo::Stroke& stroke, AILayerHandle layer,
                                          const PageMap& map) {
  const AIArtHandle path = newPath(layer);
  const auto pointCount = static_cast<std::int32_t>(stroke.size());
  const auto segmentCount = static_cast<std::int16_t>(pointCount);
  throwPlainIfFailed(call(&AIPathSuite::SetPathSegmentCount, path, segmentCount));
  fillSegments(stroke, map);
  throwPlainIfFailed(call(&AIPathSuite::SetPathSegmentCount, path, segmentCount));
  throwPlainIfFailed(
      call(&AIPathSuite::SetPathSegments, path, std::int16_t{0}, segmentCount, segments_.data()));
  throwPlainIfFailed(call(&AIPathSuite::SetPathClosed, path, AIBoolean{0}));

  const AIErr result =
      call(&AITabletDataSuite::SetTabletData, path, profiles_.data(), pointCount, kTabletPressure);
  if (result != kNoErr) platform::debugOutput(L"SetTabletData failed ");
  throwPlainIfFailed(result);
}

// A segment's control points are the anchors before and after it, so that each cubic piece runs
// straight. The last segment is made from the last point but one: its anchor repeats the segment
// before, its pressure is shifted as an integer, and the real last point only serves as a control
// point.
void kvoexportfileplugin::fillSegments(const Orvo::Stroke& stroke, const PageMap& map) {
  const std::size_t count = stroke.size();
  const auto steps = static_cast<float>(count - 1);
  segments_.resize(count);
  profiles_.resize(count);

  std::size_t i = 0;
  std::uint32_t lastPressure = 0;
  for (const Orvo::Point& point : stroke) {
    const AIRealPoint anchor = map(point);
    if (i > 0) segments_[i - 1].out = anchor;
    if (i + 1 == count) break;
    segments_[i] = {.p = anchor, .in = i > 0 ? segments_[i - 1].p : anchor, .out = {}, .corner = 0};
    profiles_[i] = {.offset = static_cast<float>(i) / steps,
                    .value = static_cast<float>(point.pressure.value * kPressureScale)};
    lastPressure = point.pressure.value;
    ++i;
  }

  const AIRealPoint anchor = segments_[i - 1].p;
  segments_[i] = {.p = anchor, .in = anchor, .out = anchor, .corner = 0};
  profiles_[i] = {.offset = 1.0F, .value = static_cast<float>(lastPressure >> 10)};
}

// Every object of every layer gets the style, including what was there before. The result is the
// code of the last call that counts: reading a layer, counting a set, setting a style. Without a
// style the art stays as it was drawn.
AIErr kvoexportfileplugin::applyArtStyle() {
  if (namedStyle == nullptr) return kNoErr;
  AIErr result = kNoErr;
  std::int32_t count = 0;
  call(&AILayerSuite::CountLayers, &count);
  for (std::int32_t index = 0; index < count; ++index) {
    AILayerHandle layer = nullptr;
    result = call(&AILayerSuite::GetNthLayer, index, &layer);
    AIBoolean hasArt = 1;
    call(&AILayerSuite::LayerHasArt, layer, &hasArt);
    if (hasArt != 0) styleLayer(layer, namedStyle, result);
  }
  return result;
}
