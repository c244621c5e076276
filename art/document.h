// The host document as plain values: what was drawn, without handles or suites.
//
// Lengths are in points, v grows upward. Numbers that the host keeps as singles are singles here,
// so that nothing is lost or gained on the way to a file. Names are bytes, normally UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "art/style.h"

namespace art {

struct Point {
  float h = 0;
  float v = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

struct Rect {
  float left = 0;
  float bottom = 0;
  float right = 0;
  float top = 0;
  friend bool operator==(const Rect&, const Rect&) = default;
};

/// One anchor of a path. The piece from one segment to the next is a cubic with the control points
/// `out` of the first and `in` of the second.
struct Segment {
  Point p;
  Point in;
  Point out;
  bool corner = false;
  friend bool operator==(const Segment&, const Segment&) = default;
};

/// A value from the pen at one place of a path.
struct TabletSample {
  float offset = 0;  ///< 0 to 1, a fraction of the path's length
  float value = 0;   ///< for pressure 0 to 1; kept as given where it is more
  friend bool operator==(const TabletSample&, const TabletSample&) = default;
};

/// The kinds of tablet data other than pressure, under the host's numbers.
enum class TabletKind : std::int32_t { stylusWheel = 1, tilt = 2, bearing = 3, rotation = 4 };

struct Path {
  bool closed = false;
  std::vector<Segment> segments;
  std::vector<TabletSample> pressure;  ///< by offset as given; may be more than there are segments
  std::map<TabletKind, std::vector<TabletSample>> otherTabletData;
  std::optional<std::size_t> style;  ///< index into Document::styles
};

struct Object;

struct Group {
  std::vector<Object> art;           ///< bottom to top
  std::optional<std::size_t> style;  ///< index into Document::styles
};

struct Object {
  std::variant<Path, Group> value;
};

struct Layer {
  std::string name;
  bool editable = true;
  bool visible = true;
  std::vector<Object> art;  ///< bottom to top
};

struct Document {
  float width = 0;  ///< as set when the document was created
  float height = 0;
  Point rulerOrigin;  ///< from the page's lower left corner
  Rect page;
  std::vector<Layer> layers;  ///< bottom to top
  std::vector<Style> styles;
};

/// The paths of a document, those inside groups included.
std::size_t countPaths(const Document& document);

}  // namespace art
