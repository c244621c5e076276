// Drawings as text, to be compared.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "penfile/pnx_document.h"

namespace pentest {

/// One point as it is listed.
struct Row {
  double x;
  double y;
  std::uint32_t pressure;
  std::int32_t tiltX;
  std::int32_t tiltY;
  std::uint32_t time;
};

/// A drawing as plain nested lists: layers of strokes of points.
using Rows = std::vector<std::vector<std::vector<Row>>>;

/// One line for each layer ("L"), stroke ("S") and point, with their boxes, every number exact.
std::string listing(const Rows& rows);

/// The same for a document.
std::string listing(const Orvo::Document& document);

/// The fields of the three header packets, in the order of the file.
std::vector<int> headerOf(const Orvo::PnxDocument& document);

}  // namespace pentest
