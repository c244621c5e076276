#include "inkml/document_serializer.h"

#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <tinyxml.h>
#include <utility>

#include "inkml/annotations.h"
#include "inkml/file_check.h"
#include "inkml/xml_helpers.h"
#include "inkml/xpath.h"
#include "platform/file.h"

namespace Orvo {

// The serializer of one layer, which the document serializer can cancel while it exists.
class DocumentSerializer::CurrentLayer {
 public:
  CurrentLayer(DocumentSerializer& owner, Layer& layer, std::uint32_t index)
      : owner_(owner), serializer_(std::make_unique<LayerSerializer>("tracegroup", &layer, index)) {
    const std::lock_guard guard(owner_.layerChange_);
    owner_.currentLayerSerializer = serializer_.get();
    owner_.hasCurrentLayer_ = true;
  }
  ~CurrentLayer() {
    const std::lock_guard guard(owner_.layerChange_);
    owner_.hasCurrentLayer_ = false;
  }
  CurrentLayer(const CurrentLayer&) = delete;
  CurrentLayer& operator=(const CurrentLayer&) = delete;

  bool read(const TiXmlElement& element) { return serializer_->read(&element); }
  bool write(TiXmlNode& parent) const { return serializer_->write(parent); }

 private:
  DocumentSerializer& owner_;
  std::unique_ptr<LayerSerializer> serializer_;
};

bool DocumentSerializer::write(const wchar_t* path, IXmlSerializable& definitions) {
  TiXmlDocument xml;
  if (!buildTree(xml, definitions)) return false;
  const platform::File file = platform::openFile(path, "w");
  if (!file) return false;
  xml.SaveFile(file.get());
  // An error with what is still in the buffer shows only once that is written.
  return std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0;
}

bool DocumentSerializer::write(const char* path, IXmlSerializable& definitions) {
  TiXmlDocument xml;
  return buildTree(xml, definitions) && xml.SaveFile(path);
}

// The library is given the text: where memory runs out, it would leave one that it reads itself.
// The text is gone before the document is made.
bool DocumentSerializer::read(const wchar_t* path, IXmlSerializable& definitions) {
  platform::File file = platform::openFile(path, "rb");
  if (!file) return false;
  FileCheck found = checkFile(file.get(), XmlEncoding::utf8);
  if (found.refusal != FileRefusal::none) return false;
  file.reset();
  TiXmlDocument xml;
  xml.Parse(std::string(std::move(found.text)).c_str(), nullptr, TIXML_ENCODING_UTF8);
  return !xml.Error() && read(xml, definitions);
}

bool DocumentSerializer::read(const char* path, IXmlSerializable& definitions) {
  if (aborted) return false;
  platform::File file(std::fopen(path, "rb"));
  if (!file) return false;
  if (checkFile(file.get(), XmlEncoding::declared).refusal != FileRefusal::none) return false;
  file.reset();  // The library opens it by its name.
  TiXmlDocument xml(path);
  return xml.LoadFile() && read(xml, definitions);
}

bool DocumentSerializer::read(TiXmlDocument& xml, IXmlSerializable& definitions) {
  const TiXmlNode* ink = findChild(xml, "ink");
  if (ink == nullptr) return false;
  definitions.read(findChild(*ink, "definitions"));
  if (!readLayers(*ink) || !readAnnotations(*ink)) return false;
  document->complete.value = true;
  return true;
}

bool DocumentSerializer::readLayers(const TiXmlNode& ink) {
  for (const TiXmlElement* group : childElements(&ink, "tracegroup")) {
    if (aborted) return false;
    Layer layer;
    if (CurrentLayer(*this, layer, 0).read(*group)) document->append(layer);
  }
  return true;
}

bool DocumentSerializer::readAnnotations(const TiXmlNode& ink) {
  for (const TiXmlElement* annotation : childElements(&ink, "annotation")) {
    if (aborted) return false;
    readAnnotation(*annotation, document->annotations());
  }
  return true;
}

bool DocumentSerializer::buildTree(TiXmlDocument& xml, IXmlSerializable& definitions) {
  linkChild(xml, std::make_unique<TiXmlDeclaration>("1.0", "", ""));
  TiXmlElement& ink = appendElement(xml, "ink");
  definitions.write(ink);
  writeAnnotations(document->annotations(), ink);
  std::uint32_t index = 0;
  for (Layer& layer : *document) {
    if (!CurrentLayer(*this, layer, index++).write(ink)) return false;
  }
  return true;
}

void DocumentSerializer::cancel() {
  aborted = true;
  const std::lock_guard guard(layerChange_);
  if (hasCurrentLayer_) currentLayerSerializer->aborted = true;
}

}  // namespace Orvo
