// Reads and writes one layer of an ink document.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "inkml/xml_serializable.h"
#include "model/layer.h"

namespace Orvo {

/// One layer as an element "tracegroup" with the layer's annotations and a "trace" for each stroke.
class LayerSerializer : public IXmlSerializable {
 public:
  /// `layerToUse` must outlive the serializer.
  LayerSerializer(std::string name, Layer* layerToUse, std::uint32_t number)
      : IXmlSerializable(std::move(name)), layer(layerToUse), index(number) {}

  /// The attribute "id" is "layer" followed by the index as a signed number. Every trace refers to
  /// the context "#default-context".
  bool write(TiXmlNode& parent) const override;

  /// Reads the index from the "id" (it has no influence on the order of layers), the traces and the
  /// annotations. Traces that cannot be read and annotations without type or text are skipped. An
  /// element without an "id" that begins with "layer" leaves the layer empty, and the result is
  /// true. False once `aborted` is set; what was read before stays.
  bool read(const TiXmlNode* element) override;

  std::atomic<bool> aborted = false;  ///< May be set by any thread to stop `read`.
  Layer* layer;
  std::uint32_t index;

 private:
  bool readTraces(const TiXmlNode* element);
  bool readAnnotations(const TiXmlNode* element);
};

}  // namespace Orvo
