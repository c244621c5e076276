// Writes a bitmap as a PNG file, row by row.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace render {

struct PngHeader {
  int width = 0;             ///< pixels, above 0
  int height = 0;            ///< pixels, above 0
  bool colored = false;      ///< otherwise red, green and blue of every pixel are the same
  bool transparent = false;  ///< otherwise every pixel is opaque
  double dotsPerMetre = 0;   ///< 0: unknown
};

class PngFile {
 public:
  /// Throws `std::bad_alloc`, as `row` and `finish` do.
  explicit PngFile(const PngHeader& header);
  ~PngFile();
  PngFile(const PngFile&) = delete;
  PngFile& operator=(const PngFile&) = delete;

  /// The next row: a pixel is alpha, red, green, blue, from the highest byte to the lowest, the
  /// colours multiplied by alpha.
  void row(const std::uint32_t* pixels);

  /// The whole file, after all rows were given.
  std::string finish();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace render
