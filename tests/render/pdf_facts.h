// What a PDF reader finds in a PDF of one page.
#pragma once

#include <string>
#include <vector>

namespace render_tests {

struct PdfFacts {
  bool warned = false;
  std::vector<double> box;
  double userUnit = 1;
  std::vector<std::string> layers;
  std::vector<std::string> order;
  std::vector<std::string> off;
  std::string content;
};

/// Throws what the reader throws when it is no PDF.
PdfFacts readPdf(const std::string& bytes);

}  // namespace render_tests
