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

/// A line of a listing: of the drawing ("D"), a layer ("L") or a stroke ("S") with the corners of
/// its box, or of a point ("P") with its six numbers.
struct Line {
  char kind;
  std::array<double, 6> numbers;
  bool operator==(const Line&) const = default;
};

/// The drawing line by line.
std::vector<Line> linesOf(const Rows& rows);

/// The same for a document.
std::vector<Line> linesOf(const Orvo::Document& document);

/// The lines as a text, to show how two drawings differ: every number exact. Comparing the lines
/// themselves takes far less time.
std::string textOf(const std::vector<Line>& lines);

/// The fields of the three header packets, in the order of the file.
std::vector<int> headerOf(const Orvo::PnxDocument& document);

}  // namespace pentest
