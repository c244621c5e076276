// Reads and writes one stroke of an ink document.
#pragma once

#include <string>

#include "inkml/xml_serializable.h"
#include "model/stroke.h"

namespace Orvo {

/// One stroke as an element "trace". Its text lists the points, separated by commas, each as seven
/// numbers separated by blanks: x, y, z, pressure, tiltX, tiltY, timestamp, whatever trace format
/// the document declares.
///
///     1520 3310 0.5 812 -20 15 40000,1524 3318 0.5 830 -19 15 40008
class StrokeSerializer : public IXmlSerializable {
 public:
  /// `strokeToUse` must outlive the serializer. `reference` is what `write` gives as "contextRef".
  StrokeSerializer(std::string name, Stroke* strokeToUse, std::string reference)
      : IXmlSerializable(std::move(name)), stroke(strokeToUse), contextRef(std::move(reference)) {}

  /// x, y and z are written with six significant digits, from 1000000 on with an exponent, in the
  /// same way in every locale. An empty stroke has an empty text.
  bool write(TiXmlNode& parent) const override;

  /// Appends the points to the stroke. The text is the value of the first child, of whatever kind.
  /// All seven numbers are read as whole numbers ("12.75" is 12), missing ones are 0, further ones
  /// are ignored, and a token without numbers is a point of zeros. False without a child; also
  /// false, but only after the points are appended, without the attribute "contextRef".
  bool read(const TiXmlNode* element) override;

  Stroke* stroke;
  std::string contextRef;
};

}  // namespace Orvo
