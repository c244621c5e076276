// Pen recordings for tests.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <vector>

namespace pentest {

using Bytes = std::vector<unsigned char>;

/// Builds the bytes of a pen recording, packet by packet. Numbers are the raw ones of the file.
class PenFileBuilder {
 public:
  PenFileBuilder& bytes(std::initializer_list<unsigned> values) {
    for (const unsigned value : values)
      data_.push_back(static_cast<unsigned char>(value));
    return *this;
  }

  PenFileBuilder& descriptor(unsigned byte0 = 0, unsigned format = 2, unsigned byte2 = 0,
                             unsigned byte3 = 0) {
    return bytes({1, 6, byte0, format, byte2, byte3});
  }
  PenFileBuilder& physical(std::initializer_list<unsigned> seven) {
    return bytes({17, 9}).bytes(seven);
  }
  PenFileBuilder& dateTime(std::initializer_list<unsigned> seven) {
    return bytes({49, 9}).bytes(seven);
  }
  PenFileBuilder& coordinate(int rawX, int rawY) { return bytes({97, 6}).word(rawX).word(rawY); }
  PenFileBuilder& pressure(unsigned algorithm, int raw) {
    return bytes({100, 6, algorithm, 0}).word(raw);
  }
  PenFileBuilder& tilt(int x, int y) { return bytes({101, 6, byteOf(x), byteOf(y), 0, 0}); }
  PenFileBuilder& time(unsigned kind, unsigned high, unsigned middle, unsigned low) {
    return bytes({194, 6, kind, high, middle, low});
  }
  PenFileBuilder& status(unsigned bits) { return bytes({241, 3, bits}); }
  PenFileBuilder& unknown(unsigned tag, unsigned lengthCode,
                          std::initializer_list<unsigned> payload = {}) {
    return bytes({tag, lengthCode}).bytes(payload);
  }

  const Bytes& data() const { return data_; }
  std::size_t size() const { return data_.size(); }

  /// Writes the recording; the file's folder must exist.
  const PenFileBuilder& write(const std::filesystem::path& path) const {
    std::ofstream file(path, std::ios::binary);
    for (const unsigned char byte : data_)
      file.put(static_cast<char>(byte));
    return *this;
  }

 private:
  static unsigned byteOf(int value) { return static_cast<unsigned>(value) & 0xFFU; }

  PenFileBuilder& word(int value) { return bytes({byteOf(value >> 8), byteOf(value)}); }

  Bytes data_;
};

}  // namespace pentest
