// How the strokes of an ink document are to be drawn.
#pragma once

#include <cstdint>
#include <string>

#include "inkml/xml_serializable.h"
#include "model/property.h"

namespace Orvo {

/// How traces are to be drawn, element "brush". Two flags are crossed in a file, which is part of
/// the format: both "antialiased" and "ignorePressure" are written from `ignorePressure`, and
/// "ignorePressure" is read into `antialiased`.
class Brush : public IXmlSerializable {
 public:
  Brush() : IXmlSerializable("brush") {}

  /// The properties become text elements in a child "annotationXML". Numbers above 2147483647 are
  /// written as negative ones.
  bool write(TiXmlNode& parent) const override;

  /// False without the attribute "id" or without a child node whose value is "annotationXML". A
  /// property that is missing becomes "", 0 or false; `ignorePressure` is never read.
  bool read(const TiXmlNode* element) override;

  Property<std::string> color{"Black"};
  Property<std::uint32_t> width{1};
  Property<std::uint32_t> height{10};
  Property<std::uint32_t> transparency{100};
  Property<bool> antialiased{false};
  Property<bool> fittocurve{true};
  Property<bool> ignorePressure{true};
  Property<std::string> pentip{"Ball"};
  std::string id{"none"};
};

}  // namespace Orvo
