#include "translate/trace_format.h"

#include <algorithm>
#include <array>
#include <utility>

#include "translate/ink_names.h"
#include "translate/units.h"

namespace translate {
namespace {

Role roleOf(std::string_view name) {
  constexpr std::array<std::pair<std::string_view, Role>, 9> kNames = {{
      {"x", Role::x},
      {"y", Role::y},
      {"f", Role::force},
      {"s", Role::tip},
      {"t", Role::time},
      {"otx", Role::tiltX},
      {"oty", Role::tiltY},
      {"oa", Role::azimuth},
      {"oe", Role::elevation},
  }};
  const std::string lowered = lowerCase(name);
  for (const auto& [known, role] : kNames) {
    if (known == lowered) return role;
  }
  return Role::other;
}

ChannelType typeOf(std::string_view name) {
  const std::string lowered = lowerCase(name);
  if (lowered == "integer") return ChannelType::integer;
  return lowered == "boolean" ? ChannelType::boolean : ChannelType::decimal;
}

// The default of a boolean channel is written as T or F.
double initialOf(std::string_view text) {
  const std::string lowered = lowerCase(text);
  if (lowered == "t" || lowered == "true") return 1;
  return numberOf(text).value_or(0);
}

class FormatReader {
 public:
  FormatReader(const InkTree& tree, const TraceFormat& source, Remarks& remarks)
      : tree_(tree), source_(source), remarks_(remarks) {}

  TraceFormat read(InkTree::Index format) {
    readChannels(format, false);
    return std::move(regular_);
  }

 private:
  void readChannels(InkTree::Index parent, bool areIntermittent) {
    TraceFormat later;
    tree_.eachChild(parent, [&](InkTree::Index child) {
      if (tree_.tag(child) == Tag::channel) {
        regular_.push_back(channelIn(child, areIntermittent));
      } else if (tree_.tag(child) == Tag::intermittentChannels && !areIntermittent) {
        tree_.eachChild(child, [&](InkTree::Index inner) {
          if (tree_.tag(inner) == Tag::channel) later.push_back(channelIn(inner, true));
        });
      }
    });
    regular_.insert(regular_.end(), later.begin(), later.end());
  }

  Channel channelIn(InkTree::Index node, bool isIntermittent) {
    Channel channel;
    const std::string_view name = tree_.attribute(node, Attribute::name).value_or("");
    const auto known = std::ranges::find_if(
        source_, [&](const Channel& other) { return lowerCase(other.name) == lowerCase(name); });
    if (known != source_.end()) channel = *known;
    channel.name = name;
    channel.role = claim(roleOf(name));
    channel.isIntermittent = isIntermittent;
    if (const auto type = tree_.attribute(node, Attribute::type)) channel.type = typeOf(*type);
    if (const auto least = numberIn(tree_, node, Attribute::min, remarks_)) channel.least = least;
    if (const auto most = numberIn(tree_, node, Attribute::max, remarks_)) channel.greatest = most;
    if (const auto initial = tree_.attribute(node, Attribute::defaultValue)) {
      channel.initial = initialOf(*initial);
    }
    if (const auto orientation = tree_.attribute(node, Attribute::orientation)) {
      channel.pointsBack = lowerCase(*orientation) == "-ve";
    }
    if (const auto units = tree_.attribute(node, Attribute::units)) channel.units = *units;
    if (const auto zero = tree_.attribute(node, Attribute::respectTo)) channel.respectTo = *zero;
    return channel;
  }

  // Of two channels with one name the first counts.
  Role claim(Role role) {
    bool& isTaken = taken_[static_cast<std::size_t>(role)];
    if (role == Role::other || isTaken) return Role::other;
    isTaken = true;
    return role;
  }

  const InkTree& tree_;
  const TraceFormat& source_;
  Remarks& remarks_;
  TraceFormat regular_;
  std::array<bool, kRoles> taken_{};
};

}  // namespace

TraceFormat defaultFormat() {
  TraceFormat format(2);
  format[0].name = "X";
  format[0].role = Role::x;
  format[1].name = "Y";
  format[1].role = Role::y;
  return format;
}

TraceFormat formatOf(const InkTree& tree, InkTree::Index format, const TraceFormat& source,
                     Remarks& remarks) {
  TraceFormat channels = FormatReader(tree, source, remarks).read(format);
  return channels.empty() ? defaultFormat() : channels;
}

std::size_t regularCount(const TraceFormat& format) {
  return static_cast<std::size_t>(
      std::ranges::count_if(format, [](const Channel& c) { return !c.isIntermittent; }));
}

const Channel* channelOf(const TraceFormat& format, Role role) {
  const auto found = std::ranges::find(format, role, &Channel::role);
  return found == format.end() ? nullptr : &*found;
}

std::optional<double> numberIn(const InkTree& tree, InkTree::Index node, Attribute attribute,
                               Remarks& remarks) {
  const auto text = tree.attribute(node, attribute);
  if (!text) return std::nullopt;
  const std::optional<double> number = numberOf(*text);
  if (!number) {
    remarks.add(RemarkKind::attributesUnreadable, 1,
                std::string(nameOf(attribute)) + "=\"" + std::string(*text) + "\"");
  }
  return number;
}

}  // namespace translate
