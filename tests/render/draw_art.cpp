// Draws art as JSON into a picture: draw_art ART.json PICTURE.(svg|pdf|png) [DPI [PRESSURE]]
// The brush is the pressure pen, 0.3 to 2.7 points.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string_view>

#include "art_reader.h"
#include "render/picture.h"

namespace {

int draw(int count, char** words) {
  if (count < 3) return 2;
  const std::string_view target = words[2];
  const auto format = target.ends_with(".pdf")   ? render::Format::pdf
                      : target.ends_with(".png") ? render::Format::png
                                                 : render::Format::svg;
  render::Options options;
  if (count > 3) options.dpi = std::atof(words[3]);
  if (count > 4) options.pressure = std::atof(words[4]);
  std::ifstream file(words[1]);
  const auto document =
      render_tests::readArt(nlohmann::json::parse(file), render_tests::pressurePen());
  const render::Picture picture = render::toPicture(document, format, options);
  if (picture.refusal) {
    std::fprintf(stderr, "%s\n", picture.refusal->c_str());
    return 1;
  }
  std::ofstream(words[2], std::ios::binary) << picture.bytes;
  return 0;
}

}  // namespace

int main(int count, char** words) {
  try {
    return draw(count, words);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return 1;
  }
}
