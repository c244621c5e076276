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

  /// How the types are spelled in a file, by their index.
  static constexpr std::array<std::string_view, 3> typeNames{"INTEGER", "DECIMAL", "BOOLEAN"};

  Channel() : IXmlSerializable("channel") {}

  /// Writes "name", "min", "max" and "units"; never the type.
  bool write(TiXmlNode& parent) const override;

  /// Reads "name", "type", "min", "max" and "units" in this order; false at the first that is
  /// missing, and what came before it is kept. A type that is not spelled as in `typeNames` leaves
  /// the type as it was.
  bool read(const TiXmlNode* element) override;

  Property<std::string> name{"none"};
  Property<Type> type{INTEGER};
  Property<std::int32_t> min;  ///< In `units`.
  Property<std::int32_t> max;
  Property<std::string> units{"0.01mm"};
};

}  // namespace Orvo
