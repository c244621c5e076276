// An art document from its JSON, for the tests.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "art/document.h"

namespace render_tests {

/// The style that the drawings of the plug-in have: 0.3 to 2.7 points by pressure, round, black.
inline art::Style pressurePen() {
  art::Style style;
  style.brush = art::CalligraphicBrush{};
  style.brush->size = {.value = 1.5, .variation = 1.2, .driver = art::BrushDriver::pressure};
  return style;
}

inline art::Object readObject(const nlohmann::json& json) {
  if (json.at("type") == "group") {
    art::Group group;
    for (const auto& object : json.at("art"))
      group.art.push_back(readObject(object));
    return {group};
  }
  art::Path path;
  path.closed = json.at("closed");
  for (const auto& s : json.at("segments"))
    path.segments.push_back({{s[0], s[1]}, {s[2], s[3]}, {s[4], s[5]}, s[6]});
  for (const auto& sample : json.at("tablet"))
    path.pressure.push_back({sample[0], sample[1]});
  if (!json.at("style").is_null()) path.style = 0;
  return {path};
}

/// Every path with a style gets the first style, which is the given one.
inline art::Document readArt(const nlohmann::json& json, const art::Style& style) {
  art::Document document;
  const auto& page = json.at("document").at("page");
  document.page = {page[0], page[1], page[2], page[3]};
  document.styles.push_back(style);
  for (const auto& layer : json.at("layers")) {
    art::Layer& drawn = document.layers.emplace_back();
    drawn.name = layer.at("name");
    for (const auto& object : layer.at("art"))
      drawn.art.push_back(readObject(object));
  }
  return document;
}

}  // namespace render_tests
