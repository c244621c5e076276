// A channel of a trace format.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "inkml/xml_serializable.h"
#include "model/property.h"

namespace Orvo {

/// One channel declaration of a trace format, element "channel".
class Channel : public IXmlSerializable {
 public:
  enum Type { INTEGER, DECIMAL, BOOLEAN };

  /// How the types are spelled in a file, in the order of `Type`.
  static constexpr std::array<std::string_view, 3> kTypeNames{"INTEGER", "DECIMAL", "BOOLEAN"};

  Channel() : IXmlSerializable("channel") {}

  /// One of whole numbers from `least` to `most`, in `unit`.
  Channel(const char* channelName, const char* unit, std::int32_t least, std::int32_t most);

  /// Writes "name", "min", "max" and "units"; never the type.
  bool write(TiXmlNode& parent) const override;

  /// Reads "name", "type", "min", "max" and "units" in this order; false at the first one that is
  /// missing, and what was read before it is kept. A type that is not one of `kTypeNames` leaves
  /// `type` as it was.
  bool read(const TiXmlNode* element) override;

  Property<std::string> name{"none"};
  Property<Type> type{INTEGER};
  Property<std::int32_t> min;  ///< In `units`.
  Property<std::int32_t> max;
  Property<std::string> units{"0.01mm"};
};

}  // namespace Orvo
