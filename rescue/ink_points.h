// The points in a damaged ink document: runs of numbers, and how sure each of them is.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace rescue {

/// A stretch between two tags in which points are looked for. It is the content of one trace, or of
/// several where the tags between them are lost.
struct InkRegion {
  std::size_t begin = 0;
  std::size_t end = 0;
  /// There is a tag there, which shows that no number is cut.
  bool isSureAtStart = false;
  bool isSureAtEnd = false;

  // Filled in by `readPoints`: its points in the list, and whether they are all that it holds.
  std::size_t firstPoint = 0;
  std::size_t lastPoint = 0;  ///< One behind the last.
  bool isWhole = false;
};

/// A point as it stands in the document.
struct InkPoint {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::array<std::int64_t, 7> numbers{};  ///< Rounded; those that it lacks are 0.
  bool isExact = true;                    ///< No number has a fraction.
  bool isSureAtStart = true;              ///< Its first number cannot have been cut.
  bool isSureAtEnd = true;
  /// Something that is no point stands between it and the point before it in its region.
  bool followsGap = false;

  std::int64_t x() const { return numbers[0]; }
  std::int64_t y() const { return numbers[1]; }
  std::int64_t time() const { return numbers[6]; }
};

/// How the points of a document are written.
struct PointForm {
  std::size_t numbers = 7;
  bool hasFractions = false;
};

/// What most of the points in the regions look like.
PointForm usualForm(std::string_view bytes, std::span<const InkRegion> regions);

/// All runs of numbers in the regions that can be points of this form, in order.
std::vector<InkPoint> readPoints(std::string_view bytes, std::span<InkRegion> regions,
                                 PointForm form);

/// The point in whole numbers, as the plug-in reads them.
std::string textOf(const InkPoint& point, PointForm form);

}  // namespace rescue
