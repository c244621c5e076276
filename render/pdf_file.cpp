#include "render/pdf_file.h"

#include <array>
#include <charconv>
#include <exception>
#include <memory>
#include <qpdf/Buffer.hh>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

namespace render {

namespace {

using Handle = QPDFObjectHandle;

// Fast rather than small: a higher level hardly makes outlines any smaller.
constexpr int kCompressionLevel = 2;

class PdfWriter {
 public:
  explicit PdfWriter(const PdfPage& page) {
    pdf_.emptyPDF();
    for (const PdfLayer& layer : page.layers)
      addLayer(layer);
    addPage(page);
    listLayers();
  }

  std::string bytes() {
    QPDFWriter writer(pdf_);
    writer.setOutputMemory();
    writer.setMinimumPDFVersion("1.6");
    writer.setDeterministicID(true);
    writer.setObjectStreamMode(qpdf_o_disable);
    writer.setCompressStreams(true);
    Pl_Flate::setCompressionLevel(kCompressionLevel);
    writer.write();
    const std::unique_ptr<Buffer> buffer(writer.getBuffer());
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
  }

 private:
  void addLayer(const PdfLayer& layer) {
    Handle group = Handle::newDictionary();
    group.replaceKey("/Type", Handle::newName("/OCG"));
    group.replaceKey("/Name", Handle::newUnicodeString(layer.name));
    group = pdf_.makeIndirectObject(group);
    groups_.push_back(group);
    if (!layer.visible) hidden_.push_back(group);
    properties_.replaceKey(PdfPage::nameOfLayer(groups_.size()), group);
  }

  void addPage(const PdfPage& wanted) {
    const Handle stream = Handle::newStream(&pdf_, wanted.content);
    Handle box = Handle::newArray();
    for (const double side : {0.0, 0.0, wanted.width, wanted.height})
      box.appendItem(Handle::newReal(pdfNumber(side)));
    Handle resources = Handle::newDictionary();
    resources.replaceKey("/Properties", properties_);
    Handle page = Handle::newDictionary();
    page.replaceKey("/Type", Handle::newName("/Page"));
    page.replaceKey("/MediaBox", box);
    page.replaceKey("/Resources", resources);
    page.replaceKey("/Contents", stream);
    if (wanted.unit > 1) page.replaceKey("/UserUnit", Handle::newReal(pdfNumber(wanted.unit)));
    pdf_.addPage(pdf_.makeIndirectObject(page), true);
  }

  void listLayers() {
    if (groups_.empty()) return;
    const std::vector<Handle> order(groups_.rbegin(), groups_.rend());
    Handle state = Handle::newDictionary();
    state.replaceKey("/Name", Handle::newUnicodeString("Layers"));
    state.replaceKey("/Order", Handle::newArray(order));
    state.replaceKey("/OFF", Handle::newArray(hidden_));
    Handle all = Handle::newDictionary();
    all.replaceKey("/OCGs", Handle::newArray(groups_));
    all.replaceKey("/D", state);
    pdf_.getRoot().replaceKey("/OCProperties", all);
  }

  QPDF pdf_;
  Handle properties_ = Handle::newDictionary();
  std::vector<Handle> groups_;
  std::vector<Handle> hidden_;
};

}  // namespace

PdfResult pdfFile(const PdfPage& page) {
  try {
    return {PdfWriter(page).bytes(), {}};
  } catch (const std::exception& problem) {
    return {{}, problem.what()};
  }
}

std::string pdfNumber(double value) {
  std::array<char, 64> digits;
  char* end = digits.data() + digits.size();
  return {digits.data(), std::to_chars(digits.data(), end, value, std::chars_format::fixed, 9).ptr};
}

}  // namespace render
