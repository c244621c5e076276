// The channels of a trace, as a trace format declares them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "translate/ink_tree.h"
#include "translate/remarks.h"

namespace translate {

/// What becomes of a channel's values.
enum class Role : std::uint8_t { x, y, force, tip, time, tiltX, tiltY, azimuth, elevation, other };
inline constexpr std::size_t kRoles = 10;

enum class ChannelType : std::uint8_t { decimal, integer, boolean };

struct Channel {
  Role role = Role::other;
  std::string name;
  ChannelType type = ChannelType::decimal;
  std::optional<double> least;     ///< "min".
  std::optional<double> greatest;  ///< "max".
  double initial = 0;              ///< "default".
  bool pointsBack = false;         ///< Orientation "-ve".
  std::string units;               ///< Empty without.
  std::string respectTo;           ///< Likewise.
  bool isIntermittent = false;
};

/// Channels in the order of a point: regular ones first, then the intermittent ones.
using TraceFormat = std::vector<Channel>;

/// X and Y, decimal and without a unit: what a trace has that nothing declares.
TraceFormat defaultFormat();

/// The channels of an element `traceFormat`. What a channel does not say, it takes from the channel
/// of the same name in `source`, the format of the device.
TraceFormat formatOf(const InkTree& tree, InkTree::Index format, const TraceFormat& source,
                     Remarks& remarks);

/// How many channels every point has.
std::size_t regularCount(const TraceFormat& format);

/// The first channel with a role; null if there is none.
const Channel* channelOf(const TraceFormat& format, Role role);

/// The number in an attribute; nothing, and a remark, if there is something else.
std::optional<double> numberIn(const InkTree& tree, InkTree::Index node, Attribute attribute,
                               Remarks& remarks);

}  // namespace translate
