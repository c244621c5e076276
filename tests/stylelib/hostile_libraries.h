// Libraries written to keep a reader busy, each of a shape that grows with `n`.
#pragma once

#include <string>

#include "tests/stylelib/library_builder.h"

namespace libtest {

inline std::string repeated(int n, const std::string& text) {
  std::string all;
  for (int i = 0; i < n; ++i)
    all += text;
  return all;
}

/// Native text with the given art styles and the given list of their names.
inline std::string bareLibrary(const std::string& styles, const std::string& list) {
  return "%!PS-Adobe-3.0\n%AI9_BeginArtStyles\n" + styles + "\n%AI9_EndArtStyles\n" +
         "%AI9_BeginArtStyleList\n" + list + "\n%AI9_EndArtStyleList\n";
}

inline std::string knownStyle(const std::string& name) {
  return "/KnownStyle : (" + name + ") /Name , ;\n";
}

/// `n` styles, listed in reverse order.
inline std::string manyListedStyles(int n) {
  std::string styles;
  std::string list;
  for (int i = 0; i < n; ++i) {
    styles += knownStyle("s" + std::to_string(i));
    list += "(s" + std::to_string(n - 1 - i) + ")\n";
  }
  return bareLibrary(styles, list);
}

/// `n` brush filters that are not the wanted one, each inside the one before it.
inline std::string nestedBrushFilters(int n) {
  return bareLibrary(
      "/KnownStyle : (s) /Name ,\n" + repeated(n, "/BasicFilter : (x) ") + repeated(n, "; ") + ";",
      "(s)");
}

/// A style of `n` groups of nested brush filters, each within the limit of nesting.
inline std::string manyNestedBrushFilters(int n) {
  return bareLibrary("/KnownStyle : (s) /Name ,\n" +
                         repeated(n, repeated(90, "/BasicFilter : (x) ") + repeated(90, "; ")) +
                         ";",
                     "(s)");
}

/// A brush whose name has `n` characters, used by one style that is listed `n` times.
inline std::string longBrushName(int n) {
  LibraryText library;
  const std::string name(static_cast<std::size_t>(n), 'n');
  library.brush = "(" + name + ")\r\n(1 0.5 3.5 100 100 0 0 2 0 0 0) .";
  library.reference = "(" + name + ")";
  library.list = repeated(n, "(My Style)\n");
  return library.text();
}

/// `n` objects without an end, so that each seems to reach to the end of the file.
inline std::string objectsWithoutEnd(int n) {
  std::string bytes = "%PDF-1.4\r";
  for (int i = 1; i <= n; ++i)
    bytes += std::to_string(i) + " 0 obj<<>>stream\n";
  return bytes;
}

/// `n` object streams without a length, a filter or an end.
inline std::string objectStreamsWithoutEnd(int n) {
  std::string bytes = "%PDF-1.4\r";
  for (int i = 1; i <= n; ++i)
    bytes += std::to_string(i) + " 0 obj<</Type/ObjStm>>stream\n";
  return bytes;
}

/// `n` whole object streams.
inline std::string objectStreams(int n) {
  PdfBuilder pdf;
  const std::string data = deflated("1 0 <<>>");
  for (int i = 1; i <= n; ++i)
    pdf.stream("/Type/ObjStm/Filter/FlateDecode", data);
  return pdf.bytes();
}

/// `n` blocks that are all the same stream, which inflates to nothing.
inline std::string blocksOfOneStream(int n) {
  std::string references;
  for (int i = 0; i < n; ++i)
    references += "/AIPrivateData" + std::to_string(i + 2) + " 2 0 R";
  // Stored blocks of no bytes, then the end of the stream.
  const std::string nothing = std::string("\x78\x01", 2) +
                              repeated(n, std::string("\x00\x00\x00\xff\xff", 5)) +
                              std::string("\x01\x00\x00\xff\xff\x00\x00\x00\x01", 9);
  return PdfBuilder().object("<<" + references + ">>").stream("/FlateDecode", nothing).bytes();
}

/// `n` streams whose length is one object, which begins with `n` blanks.
inline std::string lengthsBehindBlanks(int n) {
  std::string references;
  for (int i = 0; i < n; ++i)
    references += "/AIPrivateData" + std::to_string(i + 2) + " " + std::to_string(i + 3) + " 0 R";
  PdfBuilder pdf;
  pdf.object("<<" + references + ">>");
  pdf.object(std::string(static_cast<std::size_t>(n), ' ') + "1");
  for (int i = 0; i < n; ++i)
    pdf.streamOfLength("2 0 R", "", "%");
  return pdf.bytes();
}

}  // namespace libtest
