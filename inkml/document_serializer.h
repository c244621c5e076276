// Reads and writes whole ink documents.
#pragma once

#include <atomic>

#include "inkml/layer_serializer.h"
#include "inkml/xml_serializable.h"
#include "model/document.h"
#include "platform/thread.h"

class TiXmlDocument;

namespace Orvo {

/// A whole document as an ink file:
///
///     <?xml version="1.0" ?>
///     <ink>
///         <definitions>...</definitions>
///         <annotation type="...">...</annotation>
///         <tracegroup id="layer0">...</tracegroup>
///     </ink>
///
/// Reading adds to what the document and the definitions hold. Nothing is logged: a failure is a
/// false result, and the document is not marked complete.
class DocumentSerializer {
 public:
  /// `documentToUse` must outlive the serializer.
  explicit DocumentSerializer(Document* documentToUse) : document(documentToUse) {}
  DocumentSerializer(const DocumentSerializer&) = delete;
  DocumentSerializer& operator=(const DocumentSerializer&) = delete;
  virtual ~DocumentSerializer() = default;

  /// Writes the file in text mode: on Windows its lines end with CR LF. False when it cannot be
  /// created or written; a partly written file is left in place.
  virtual bool write(const wchar_t* path, IXmlSerializable& definitions);

  /// The same for a narrow path.
  virtual bool write(const char* path, IXmlSerializable& definitions);

  /// Reads the file as UTF-8. False when it cannot be opened, is refused (see `checkFile`) or does
  /// not parse, and for the reasons of the overload that reads a tree.
  virtual bool read(const wchar_t* path, IXmlSerializable& definitions);

  /// The same for a narrow path, in the encoding that the file declares; false at once when
  /// `aborted` is set.
  virtual bool read(const char* path, IXmlSerializable& definitions);

  /// Reads the first top-level node whose value is "ink", and its first child whose value is
  /// "definitions"; both may be nodes of any kind. False when there is no such "ink", and at the
  /// next group or annotation once `aborted` is set. Otherwise the document is complete, with a
  /// layer for each "tracegroup".
  virtual bool read(TiXmlDocument& xml, IXmlSerializable& definitions);

  /// Puts the declaration and the element "ink" with everything below it into `xml`.
  bool buildTree(TiXmlDocument& xml, IXmlSerializable& definitions);

  /// Stops a read that runs in another thread: sets `aborted` here and for the layer that is being
  /// read.
  void cancel();

  std::atomic<bool> aborted = false;  ///< Set by any thread; never reset here.
  Document* document;

  /// The serializer of the layer that is being read or written. It is not cleared afterwards, but
  /// keeps the address of the last one, which is deleted.
  LayerSerializer* currentLayerSerializer = nullptr;

 private:
  class CurrentLayer;

  bool readLayers(const TiXmlNode& ink);
  bool readAnnotations(const TiXmlNode& ink);

  // Held while `currentLayerSerializer` changes, and by `cancel`, which must not use a deleted one.
  platform::CriticalSection layerChange_;
  bool hasCurrentLayer_ = false;
};

}  // namespace Orvo
