// Documents of other programs for tests, and what their translations hold.
#pragma once

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/ink/ink_builder.h"
#include "translate/translation.h"

namespace translatetest {

using inktest::Seven;
using translate::RemarkKind;
using translate::Translation;

/// X and Y in millimetres.
inline constexpr std::string_view kMillimetres =
    "<traceFormat><channel name='X' units='mm'/><channel name='Y' units='mm'/></traceFormat>";

inline std::string ink(const std::string& content) {
  return "<?xml version='1.0'?>\n<ink xmlns='http://www.w3.org/2003/InkML'>" + content + "</ink>\n";
}

/// A document whose traces have X and Y in millimetres.
inline std::string inMillimetres(const std::string& traces) {
  return ink(std::string(kMillimetres) + traces);
}

/// A document whose traces have X and Y in millimetres and `channels` behind them.
inline std::string withChannels(const std::string& channels, const std::string& traces) {
  return ink("<traceFormat><channel name='X' units='mm'/><channel name='Y' units='mm'/>" +
             channels + "</traceFormat>" + traces);
}

inline Translation translated(const std::string& bytes) {
  Translation result = translate::translateInk(bytes);
  EXPECT_EQ(result.problem, "") << bytes;
  EXPECT_TRUE(result.document->complete.value);
  return result;
}

/// Points stroke by stroke, layer by layer, each stroke without its doubled end.
inline std::vector<std::vector<std::vector<Seven>>> layersOf(const Translation& translation) {
  std::vector<std::vector<std::vector<Seven>>> layers;
  for (const Orvo::Layer& layer : *translation.document) {
    layers.emplace_back();
    for (const Orvo::Stroke& stroke : layer) {
      std::vector<Seven> points = inktest::pointsOf(stroke);
      EXPECT_GE(points.size(), 2U);
      EXPECT_EQ(points[points.size() - 2], points.back());
      points.pop_back();
      layers.back().push_back(std::move(points));
    }
  }
  return layers;
}

/// All strokes of a document that has no remarks beyond those of the kinds named.
inline std::vector<std::vector<Seven>> strokesOf(const std::string& bytes) {
  std::vector<std::vector<Seven>> all;
  for (auto& layer : layersOf(translated(bytes))) {
    for (auto& stroke : layer)
      all.push_back(std::move(stroke));
  }
  return all;
}

using Place = std::pair<double, double>;
using Places = std::vector<Place>;

/// x and y of every point of every stroke, in tenths of a millimetre.
inline std::vector<Places> placesOf(const std::string& bytes) {
  std::vector<Places> all;
  for (const auto& stroke : strokesOf(bytes)) {
    all.emplace_back();
    for (const Seven& point : stroke)
      all.back().emplace_back(point.x, point.y);
  }
  return all;
}

/// The same of the only stroke.
inline Places onlyPlaces(const std::string& bytes) {
  const std::vector<Places> all = placesOf(bytes);
  EXPECT_EQ(all.size(), 1U) << bytes;
  return all.empty() ? Places() : all.front();
}

/// Those of the only trace in millimetres with this text.
inline Places placesIn(const std::string& text) {
  return onlyPlaces(inMillimetres("<trace>" + text + "</trace>"));
}

template <class Value>
std::vector<Value> valuesOf(const std::string& bytes, Value Seven::*member) {
  std::vector<Value> values;
  for (const auto& stroke : strokesOf(bytes)) {
    for (const Seven& point : stroke)
      values.push_back(point.*member);
  }
  return values;
}

/// How often a remark says something; 0 if it is not there.
inline std::uint64_t remarked(const Translation& translation, RemarkKind kind,
                              std::string_view detail = {}) {
  for (const translate::Remark& remark : translation.remarks) {
    if (remark.kind == kind && (detail.empty() || remark.detail == detail)) return remark.count;
  }
  return 0;
}

inline std::uint64_t remarked(const std::string& bytes, RemarkKind kind,
                              std::string_view detail = {}) {
  return remarked(translated(bytes), kind, detail);
}

inline std::string problemOf(const std::string& bytes) {
  const Translation result = translate::translateInk(bytes);
  EXPECT_FALSE(result.document->complete.value);
  EXPECT_EQ(result.document->size(), 0U);
  return result.problem;
}

}  // namespace translatetest
