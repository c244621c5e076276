#include "render/png_file.h"

#include <cmath>
#include <csetjmp>
#include <cstddef>
#include <exception>
#include <new>
#include <png.h>
#include <vector>
#include <zlib.h>

namespace render {

namespace {

constexpr int kCompressionLevel = 1;
constexpr std::size_t kChunk = 1U << 16U;

int colorTypeOf(const PngHeader& header) {
  return (header.colored ? PNG_COLOR_MASK_COLOR : 0) |
         (header.transparent ? PNG_COLOR_MASK_ALPHA : 0);
}

unsigned char plain(unsigned color, unsigned alpha) {
  return static_cast<unsigned char>((color * 255 + alpha / 2) / alpha);
}

// The library is C: no exception may pass through it.
void append(png_structp png, png_bytep bytes, std::size_t count) {
  auto* file = static_cast<std::string*>(png_get_io_ptr(png));
  bool isAppended = false;
  try {
    file->append(reinterpret_cast<const char*>(bytes), count);
    isAppended = true;
  } catch (const std::exception&) {
    isAppended = false;
  }
  if (!isAppended) png_error(png, "");
}

void flush(png_structp) {}

[[noreturn]] void leave(png_structp png, png_const_charp) {
  png_longjmp(png, 1);
}

void ignore(png_structp, png_const_charp) {}

}  // namespace

struct PngFile::State {
  explicit State(const PngHeader& h)
      : header(h),
        row(static_cast<std::size_t>(h.width) * static_cast<std::size_t>(bytesPerPixel())) {
    png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, ignore);
    if (png != nullptr) info = png_create_info_struct(png);
    if (info == nullptr) {
      png_destroy_write_struct(&png, &info);
      throw std::bad_alloc();
    }
  }
  ~State() { png_destroy_write_struct(&png, &info); }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  int bytesPerPixel() const { return (header.colored ? 3 : 1) + (header.transparent ? 1 : 0); }

  // Calls the library, which jumps back here where it fails: for lack of memory, since nothing else
  // can go wrong. `work` has no destructors to run.
  template <class Work>
  void call(Work work) {
    // NOLINTNEXTLINE(cert-err52-cpp): the library reports in no other way.
    if (setjmp(png_jmpbuf(png)) != 0) throw std::bad_alloc();
    work();
  }

  // Runs of equal differences from the row above are what a drawing is made of.
  void begin() {
    png_set_write_fn(png, &file, append, flush);
    png_set_compression_level(png, kCompressionLevel);
    png_set_compression_strategy(png, Z_RLE);
    png_set_compression_mem_level(png, MAX_MEM_LEVEL);
    png_set_compression_buffer_size(png, kChunk);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_UP);
    png_set_IHDR(png, info, static_cast<png_uint_32>(header.width),
                 static_cast<png_uint_32>(header.height), 8, colorTypeOf(header),
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (header.dotsPerMetre >= 1 && header.dotsPerMetre <= 2e9) {
      const auto dots = static_cast<png_uint_32>(std::llround(header.dotsPerMetre));
      png_set_pHYs(png, info, dots, dots, PNG_RESOLUTION_METER);
    }
    png_write_info(png, info);
  }

  void convert(const std::uint32_t* pixels) {
    unsigned char* to = row.data();
    for (int i = 0; i < header.width; ++i, to += bytesPerPixel()) {
      const std::uint32_t pixel = pixels[i];
      if (header.transparent) {
        convertTransparent(pixel, to);
      } else {
        to[0] = static_cast<unsigned char>(pixel >> 16U);
        if (!header.colored) continue;
        to[1] = static_cast<unsigned char>(pixel >> 8U);
        to[2] = static_cast<unsigned char>(pixel);
      }
    }
  }

  // Most pixels are empty or opaque, and need no division.
  void convertTransparent(std::uint32_t pixel, unsigned char* to) const {
    const unsigned alpha = pixel >> 24U;
    const bool divided = alpha != 0 && alpha != 255;
    const auto part = [&](unsigned shift) {
      const unsigned color = pixel >> shift & 0xFFU;
      return divided ? plain(color, alpha) : static_cast<unsigned char>(color);
    };
    to[bytesPerPixel() - 1] = static_cast<unsigned char>(alpha);
    to[0] = part(16);
    if (!header.colored) return;
    to[1] = part(8);
    to[2] = part(0);
  }

  PngHeader header;
  std::vector<unsigned char> row;
  png_structp png = nullptr;
  png_infop info = nullptr;
  std::string file;
};

PngFile::PngFile(const PngHeader& header) : state_(std::make_unique<State>(header)) {
  state_->call([this] { state_->begin(); });
}

PngFile::~PngFile() = default;

void PngFile::row(const std::uint32_t* pixels) {
  state_->convert(pixels);
  state_->call([this] { png_write_row(state_->png, state_->row.data()); });
}

std::string PngFile::finish() {
  state_->call([this] { png_write_end(state_->png, nullptr); });
  return std::move(state_->file);
}

}  // namespace render
