#pragma once

#include <string>
#include <tinyxml.h>
#include <utility>

namespace Orvo {

/// Something that is one element of an ink document. Nothing here logs: a failure is a false
/// result.
class IXmlSerializable {
 public:
  explicit IXmlSerializable(std::string name) : elementName(std::move(name)) {}
  virtual ~IXmlSerializable() = default;

  /// Appends the object's element under `parent`.
  virtual bool write(TiXmlNode& parent) const = 0;

  /// Fills the object from `element`, which may be null or no element at all; what is there already
  /// is never cleared. False when something that must be there is missing.
  virtual bool read(const TiXmlNode* element) = 0;

  /// The name of the element that the object writes and reads.
  virtual std::string getName() const { return elementName; }

 protected:
  IXmlSerializable(const IXmlSerializable&) = default;
  IXmlSerializable& operator=(const IXmlSerializable&) = default;

  std::string elementName;
};

}  // namespace Orvo
