// Builds the bytes of libraries from the parts of the format.
#pragma once

#include <span>
#include <string>
#include <vector>
#include <zlib.h>

#include "stylelib/native_library.h"

namespace libtest {

inline stylelib::NativeLibrary read(const std::string& bytes) {
  return stylelib::readNativeLibrary(
      {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

inline std::string deflated(const std::string& text) {
  const auto length = static_cast<uLong>(text.size());
  uLongf size = compressBound(length);
  std::string out(size, '\0');
  compress(reinterpret_cast<Bytef*>(out.data()), &size, reinterpret_cast<const Bytef*>(text.data()),
           length);
  out.resize(size);
  return out;
}

// The parts of a library's text.
struct LibraryText {
  std::string brush = "(My Pen)\r\n(1 0.5 3.5 100 100 0 0 2 0 0 0) .";
  std::string reference = "(My Pen)";
  std::string keys;
  std::string stroke = "0 R 0 0 0 1 K 0 J 0 j 1 w 4 M []0 d";
  std::string list = "([Default])\r\n(My Style)";

  std::string text() const {
    return "%!PS-Adobe-3.0 \r\n%%EndComments\r\n"
           "%AI8_BeginPluginObject\r\n(Adobe Calligraphic Brush Tool)\r\n" +
           brush +
           "\r\n%AI8_EndPluginObject\r\n"
           "%AI9_BeginArtStyles\r\n"
           "/KnownStyle :\r\n(My Style) /Name ,\r\n/ActiveStyle :\r\n/CompoundFilter :\r\n"
           "(Chain Style Filter) 0 0 /Filter ,\r\n"
           "/BasicFilter :\r\n(Adobe Calligraphic Brush Tool) 1 0 /Filter ,\r\n"
           "/Dictionary :\r\n/StrokeStyle : " +
           stroke + " /Def ; (StrokeStyle) ,\r\n/GObjRef : " + reference +
           " (Adobe Calligraphic Brush Tool) /PluginObject ; (Brush) ,\r\n" + keys +
           "; /Dict ;\r\n /Part ,\r\n;\r\n/Execution ;\r\n /Def ;\r\n"
           "/KnownStyle :\r\n([Default]) /Name ,\r\n/SimpleStyle :\r\n0 0 0 1 K 1 w /Paint ;\r\n"
           " /Def ;\r\n%AI9_EndArtStyles\r\n"
           "%AI9_BeginArtStyleList\r\n" +
           list + "\r\n%AI9_EndArtStyleList\r\n";
  }
};

// A PDF around private streams, without a cross-reference table.
class PdfBuilder {
 public:
  PdfBuilder& object(const std::string& dictionary) { return add(dictionary, ""); }
  PdfBuilder& stream(const std::string& keys, const std::string& data) {
    return streamOfLength(std::to_string(data.size()), keys, data);
  }
  PdfBuilder& streamOfLength(const std::string& length, const std::string& keys,
                             const std::string& data) {
    return add("<</Length " + length + keys + ">>", "stream\r\n" + data + "\r\nendstream");
  }
  const std::string& bytes() const { return bytes_; }

 private:
  PdfBuilder& add(const std::string& dictionary, const std::string& stream) {
    bytes_ += std::to_string(++count_) + " 0 obj\r" + dictionary + stream + "\rendobj\r";
    return *this;
  }

  std::string bytes_ = "%PDF-1.4\r";
  int count_ = 0;
};

inline std::string pdfOfBlocks(const std::vector<std::string>& blocks, const std::string& keys) {
  std::string references;
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    references += "/AIPrivateData" + std::to_string(i + 2) + " " + std::to_string(i + 3) + " 0 R";
  }
  PdfBuilder pdf;
  pdf.object("<</AIPrivateData1 2 0 R" + references + "/NumBlock 9>>");
  pdf.stream("", "%%BoundingBox: 0 0 1 1\r\n");
  for (const std::string& block : blocks)
    pdf.stream(keys, block);
  return pdf.bytes();
}

}  // namespace libtest
