// The base class of everything that is one element of an ink document.
#pragma once

#include <string>
#include <utility>

class TiXmlNode;

namespace Orvo {

/// Something that is one element of an ink document. Nothing is logged: a failure is a false
/// result.
class IXmlSerializable {
 public:
  explicit IXmlSerializable(std::string name) : elementName(std::move(name)) {}
  virtual ~IXmlSerializable() = default;

  /// Appends the object's element under `parent`.
  virtual bool write(TiXmlNode& parent) const = 0;

  /// Fills the object from `element`, which may be null or a node of another kind. Nothing that the
  /// object already holds is cleared. False when something required is missing.
  virtual bool read(const TiXmlNode* element) = 0;

  /// The name of the element that the object writes and reads.
  virtual std::string getName() const { return elementName; }

 protected:
  IXmlSerializable(const IXmlSerializable&) = default;
  IXmlSerializable& operator=(const IXmlSerializable&) = default;

  std::string elementName;
};

}  // namespace Orvo
