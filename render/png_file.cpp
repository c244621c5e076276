#include "render/png_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <new>
#include <string_view>
#include <vector>
#include <zlib.h>

namespace render {

namespace {

constexpr int kCompressionLevel = 1;
constexpr std::size_t kChunk = 1U << 16U;
constexpr unsigned char kUp = 2;  // each byte as its difference from the one above

enum ColorType : unsigned char { grey = 0, rgb = 2, greyAlpha = 4, rgbAlpha = 6 };

ColorType colorTypeOf(const PngHeader& header) {
  if (header.transparent) return header.colored ? rgbAlpha : greyAlpha;
  return header.colored ? rgb : grey;
}

void appendNumber(std::string& text, std::size_t number) {
  for (const unsigned shift : {24U, 16U, 8U, 0U})
    text += static_cast<char>(number >> shift & 0xFFU);
}

void appendChunk(std::string& file, std::string_view type, std::string_view data) {
  appendNumber(file, data.size());
  const std::size_t begin = file.size();
  file += type;
  file += data;
  const uLong sum = crc32(0, reinterpret_cast<const Bytef*>(file.data()) + begin,
                          static_cast<uInt>(type.size() + data.size()));
  appendNumber(file, sum);
}

unsigned char plain(unsigned color, unsigned alpha) {
  return static_cast<unsigned char>((color * 255 + alpha / 2) / alpha);
}

}  // namespace

struct PngFile::State {
  explicit State(const PngHeader& h) : header(h), type(colorTypeOf(h)), output(kChunk, '\0') {
    constexpr std::array<std::size_t, 7> kBytes{1, 0, 3, 0, 2, 0, 4};
    bytesPerPixel = kBytes.at(type);
    const std::size_t bytes = static_cast<std::size_t>(h.width) * bytesPerPixel;
    above.resize(bytes);
    current.resize(bytes);
    filtered.resize(bytes + 1);
    filtered[0] = kUp;
    if (deflateInit2(&stream, kCompressionLevel, Z_DEFLATED, MAX_WBITS, MAX_MEM_LEVEL, Z_RLE) !=
        Z_OK) {
      throw std::bad_alloc();
    }
    stream.next_out = outputBytes();
    stream.avail_out = kChunk;
  }
  ~State() { deflateEnd(&stream); }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  Bytef* outputBytes() { return reinterpret_cast<Bytef*>(output.data()); }

  void begin() {
    file = "\x89PNG\r\n\x1A\n";
    std::string data;
    appendNumber(data, static_cast<std::size_t>(header.width));
    appendNumber(data, static_cast<std::size_t>(header.height));
    data += {'\x08', static_cast<char>(type), '\0', '\0', '\0'};
    appendChunk(file, "IHDR", data);
    if (header.dotsPerMetre < 1 || header.dotsPerMetre > 2e9) return;
    data.clear();
    const auto dots = static_cast<std::size_t>(std::llround(header.dotsPerMetre));
    appendNumber(data, dots);
    appendNumber(data, dots);
    data += '\x01';
    appendChunk(file, "pHYs", data);
  }

  void convert(const std::uint32_t* pixels) {
    unsigned char* to = current.data();
    for (int i = 0; i < header.width; ++i, to += bytesPerPixel) {
      const std::uint32_t pixel = pixels[i];
      if (header.transparent) {
        convertTransparent(pixel, to);
      } else {
        to[0] = static_cast<unsigned char>(pixel >> 16U);
        if (type == grey) continue;
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
    to[bytesPerPixel - 1] = static_cast<unsigned char>(alpha);
    to[0] = part(16);
    if (type == greyAlpha) return;
    to[1] = part(8);
    to[2] = part(0);
  }

  void filter() {
    const std::size_t bytes = current.size();
    for (std::size_t i = 0; i < bytes; ++i)
      filtered[i + 1] = static_cast<unsigned char>(current[i] - above[i]);
    current.swap(above);
  }

  void compress(int flush) {
    int status = Z_OK;
    do {
      status = deflate(&stream, flush);
      if (status == Z_STREAM_ERROR) throw std::bad_alloc();
      if (stream.avail_out == 0 || status == Z_STREAM_END) writeOut();
    } while (stream.avail_in > 0 || (flush == Z_FINISH && status != Z_STREAM_END));
  }

  void writeOut() {
    appendChunk(file, "IDAT", std::string_view(output).substr(0, kChunk - stream.avail_out));
    stream.next_out = outputBytes();
    stream.avail_out = kChunk;
  }

  PngHeader header;
  ColorType type;
  std::size_t bytesPerPixel = 0;
  std::vector<unsigned char> above;
  std::vector<unsigned char> current;
  std::vector<unsigned char> filtered;
  z_stream stream{};
  std::string output;
  std::string file;
};

PngFile::PngFile(const PngHeader& header) : state_(std::make_unique<State>(header)) {
  state_->begin();
}

PngFile::~PngFile() = default;

void PngFile::row(const std::uint32_t* pixels) {
  state_->convert(pixels);
  state_->filter();
  state_->stream.next_in = state_->filtered.data();
  state_->stream.avail_in = static_cast<uInt>(state_->filtered.size());
  state_->compress(Z_NO_FLUSH);
}

std::string PngFile::finish() {
  state_->compress(Z_FINISH);
  appendChunk(state_->file, "IEND", {});
  return std::move(state_->file);
}

}  // namespace render
