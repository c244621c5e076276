// The PDF file around the drawing operators of its page. Plain types only: one source file alone
// sees the library that writes it.
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
  /// The name of a layer in the operators, by its number from 1: /OC NAME BDC ... EMC.
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

/// With a decimal point in every locale, and without an exponent.
std::string pdfNumber(double value);

}  // namespace render
