// How the values of a trace become millimetres, degrees and milliseconds.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "translate/contexts.h"
#include "translate/mapping.h"
#include "translate/trace_format.h"
#include "translate/units.h"

namespace translate {

/// One axis of the drawing.
struct Axis {
  double sign = 1;              ///< -1 where the channel points the other way.
  std::optional<double> scale;  ///< mm for each unit; nothing where nobody says.
};

/// What the traces of one source, format and canvas have in common.
struct Layout {
  static constexpr std::size_t kNoColumn = static_cast<std::size_t>(-1);

  TraceFormat format;
  std::array<std::size_t, kRoles> columns{};  ///< Of each role in a point, or kNoColumn.
  Axis x;
  Axis y;
  CanvasTransform transform;
  double leastForce = 0;
  std::optional<double> greatestForce;
  std::array<double, kRoles> angleScales{};  ///< Degrees for each unit of the channels of angles.
  double timeScale = 1;                      ///< ms for each unit of T.
  std::optional<double> period;              ///< ms from one point to the next.
  bool hasOthers = false;                    ///< Has channels that the drawing has no use for.

  std::size_t column(Role role) const { return columns[static_cast<std::size_t>(role)]; }
  bool has(Role role) const { return column(role) != kNoColumn; }
};

/// Makes the layouts, each once. What it is given must outlive it.
class Layouts {
 public:
  Layouts(const InkTree& tree, Contexts& contexts, Remarks& remarks)
      : tree_(tree), contexts_(contexts), remarks_(remarks) {}

  const Layout& of(const Surroundings& surroundings);

 private:
  struct Resolution {
    std::optional<double> value;
    std::string units;
  };
  using Key = std::tuple<InkTree::Index, InkTree::Index, InkTree::Index, InkTree::Index>;

  Layout make(const Surroundings& surroundings);
  void assignRoles(Layout& layout);
  TraceFormat readFormat(const Surroundings& surroundings);
  std::map<std::string, Resolution> resolutionsOf(InkTree::Index source);
  std::optional<double> unitScale(const Channel& channel, Quantity quantity);
  std::optional<double> scaleOf(const Channel& channel, Quantity quantity);
  std::optional<double> areaScale(const Channel& channel, InkTree::Index source);
  void placeAxes(const Surroundings& surroundings, Layout& layout);
  Axis axisOf(const TraceFormat& format, Role role, InkTree::Index source);
  void useCanvas(const Surroundings& surroundings, Layout& layout);
  void readForce(Layout& layout) const;
  void readRate(InkTree::Index source, Layout& layout);

  const InkTree& tree_;
  Contexts& contexts_;
  Remarks& remarks_;
  std::map<std::string, Resolution> resolutions_;  // Of the source at hand, by channel.
  std::map<Key, Layout> known_;
};

}  // namespace translate
