// The file of a PDF around the operators of its page. Plain types only: the library that writes it
// is seen by one source file.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace render {

struct PdfLayer {
  std::string name;  ///< UTF-8
  bool visible = true;
};

struct PdfPage {
  /// What the operators call the layer of this number, counted from 1: /OC NAME BDC ... EMC.
  static std::string nameOfLayer(std::size_t number) { return "/L" + std::to_string(number); }

  double width = 0;  ///< in units of the page
  double height = 0;
  double unit = 1;  ///< in points, 1 or more
  std::string content;
  std::vector<PdfLayer> layers;  ///< bottom to top
};

/// The bytes, or what went wrong.
struct PdfResult {
  std::string bytes;
  std::string problem;
};

/// One page, its operators compressed, the layers listed with the topmost first, as programs show
/// them.
PdfResult pdfFile(const PdfPage& page);

/// With a point in every locale, without an exponent.
std::string pdfNumber(double value);

}  // namespace render
