#include "tests/penfile/reference_model.h"

#include <algorithm>
#include <map>

namespace pentest {
namespace {

using Orvo::ParseFailure;

struct Packet {
  int tag;
  std::vector<int> payload;
};

// The kLengths of the known packets, tag and length code included.
const std::map<int, std::size_t> kLengths{{1, 6},   {17, 9},  {49, 9},  {97, 6},
                                          {100, 6}, {101, 6}, {194, 6}, {241, 3}};

std::size_t lengthOf(int code) {
  std::size_t length = static_cast<std::size_t>(code % 64);
  for (int exponent = code / 64; exponent > 0; --exponent)
    length *= 6;
  return length;
}

int asSigned(int byte) {
  return byte < 128 ? byte : byte - 256;
}

int asSigned(int high, int low) {
  return asSigned(high) * 256 + low;
}

class Splitter {
 public:
  Splitter(const Bytes& bytes, ReferenceReading& result) : bytes_(bytes), result_(result) {}

  std::vector<Packet> split() {
    if (!descriptor()) {
      result_.log.emplace_back("SEVERE invalid file descriptor\tPnxParser::parse()");
      return packets_;
    }
    while (at_ < bytes_.size() && result_.failure == ParseFailure::none && !result_.endless)
      next();
    return packets_;
  }

 private:
  int byteAt(std::size_t index) const { return index < bytes_.size() ? bytes_[index] : 0; }

  bool failAt(std::size_t offset, ParseFailure failure) {
    result_.failure = failure;
    result_.failedAt = offset;
    return false;
  }

  void noteCut(std::size_t start, std::size_t length) {
    if (start + length > bytes_.size()) result_.cutAt = static_cast<std::int64_t>(start);
  }

  bool descriptor() {
    if (byteAt(0) != 1) {
      result_.log.emplace_back(
          "SEVERE bad packet tag: 1 expected for file "
          "descriptor\tFileDescriptor::readFromStream()");
      return failAt(0, bytes_.empty() ? ParseFailure::emptyFile : ParseFailure::badFirstTag);
    }
    if (lengthOf(byteAt(1)) != 6) {
      noteCut(0, 2);
      return failAt(0, ParseFailure::badDescriptorLength);
    }
    noteCut(0, 6);
    result_.header[0] = byteAt(2);
    result_.header[1] = byteAt(3);
    if (byteAt(3) != 2) {
      result_.log.emplace_back(
          "SEVERE Invalid coordinate format - currently only cooridnates are supported\t"
          "FileDescriptor::readFromStream()");
      return failAt(0, ParseFailure::badCoordinateFormat);
    }
    result_.header[2] = byteAt(4);
    result_.header[3] = byteAt(5);
    at_ = 6;
    return true;
  }

  void next() {
    const std::size_t start = at_;
    const int tag = byteAt(start);
    const auto known = kLengths.find(tag);
    if (known == kLengths.end()) return skip(start);
    if (tag == 1) {
      result_.log.emplace_back("SEVERE multipe file descriptors found\tPnxParser::parse()");
      failAt(start, ParseFailure::secondDescriptor);
      return;
    }
    if (start + 1 >= bytes_.size() || lengthOf(byteAt(start + 1)) != known->second) {
      noteCut(start, 2);
      failAt(start, ParseFailure::wrongLength);
      return;
    }
    noteCut(start, known->second);
    Packet packet{tag, {}};
    for (std::size_t i = 2; i < known->second; ++i)
      packet.payload.push_back(byteAt(start + i));
    if (tag == 100 && !isPressure(packet.payload[0])) {
      result_.log.emplace_back(
          "WARNING invalid pressure algorithm type\tPressureData::readFromStream()");
      failAt(start, ParseFailure::badPressureAlgorithm);
      return;
    }
    packets_.push_back(packet);
    at_ = start + known->second;
  }

  static bool isPressure(int algorithm) {
    return algorithm == 1 || algorithm == 5 || algorithm == 6;
  }

  void skip(std::size_t start) {
    const int code = byteAt(start + 1);
    if (code != 0 && lengthOf(code) == 0) {
      result_.endless = true;
      return;
    }
    ++result_.unknown;
    const std::size_t length = code == 0 ? 2 : lengthOf(code);
    noteCut(start, std::max<std::size_t>(length, 2));
    at_ = start + length;
  }

  const Bytes& bytes_;
  ReferenceReading& result_;
  std::vector<Packet> packets_;
  std::size_t at_ = 0;
};

class Player {
 public:
  explicit Player(ReferenceReading& result) : result_(result) {}

  void play(const Packet& packet) {
    const std::vector<int>& p = packet.payload;
    switch (packet.tag) {
      case 17:
        std::copy(p.begin(), p.end(), result_.header.begin() + 4);
        break;
      case 49:
        std::copy(p.begin(), p.end(), result_.header.begin() + 11);
        break;
      case 97:
        point(asSigned(p[0], p[1]), asSigned(p[2], p[3]));
        break;
      case 100:
        pressure_ = p[0] == 6 ? asSigned(p[2], p[3]) : (p[2] * 256 + p[3]) / 4;
        if (aloneInStroke()) last()->pressure = static_cast<std::uint32_t>(pressure_);
        break;
      case 101:
        tiltX_ = asSigned(p[0]);
        tiltY_ = asSigned(p[1]);
        if (aloneInStroke()) {
          last()->tiltX = tiltX_;
          last()->tiltY = tiltY_;
        }
        break;
      case 194:
        time_ = p[0] == 17 ? timeOf(p) : 0;
        if (last() != nullptr) last()->time = time_;
        break;
      default:
        status(p[0]);
    }
  }

 private:
  enum class Next { sameStroke, newStroke, newLayer };

  // A byte of 128 or more fills everything above it with ones.
  static std::uint32_t timeOf(const std::vector<int>& p) {
    std::uint32_t time = static_cast<std::uint32_t>(p[1]) * 65536U +
                         static_cast<std::uint32_t>(p[2]) * 256U + static_cast<std::uint32_t>(p[3]);
    if (p[1] >= 128) time |= 0xFF000000U;
    if (p[2] >= 128) time |= 0xFFFF0000U;
    if (p[3] >= 128) time |= 0xFFFFFF00U;
    return time;
  }

  std::vector<Row>* lastStroke() {
    return result_.rows.empty() ? nullptr : &result_.rows.back().back();
  }
  Row* last() { return lastStroke() == nullptr ? nullptr : &lastStroke()->back(); }
  bool aloneInStroke() { return lastStroke() != nullptr && lastStroke()->size() == 1; }

  void point(int rawX, int rawY) {
    if (2 * rawY + 5 < 0) {
      ++result_.dropped;
      return;
    }
    const Row row{(rawX + 5) / 10.0,
                  (2 * rawY + 5) / 10.0,
                  static_cast<std::uint32_t>(pressure_),
                  tiltX_,
                  tiltY_,
                  time_};
    if (next_ == Next::newLayer) result_.rows.emplace_back();
    if (next_ != Next::sameStroke) result_.rows.back().emplace_back();
    lastStroke()->push_back(row);
    next_ = Next::sameStroke;
  }

  void status(int bits) {
    const bool layer = bits >= 128;
    const bool down = bits % 2 == 1;
    const bool newStroke = !layer && down && !wasDown_;
    if (layer) next_ = Next::newLayer;
    if (newStroke && next_ == Next::sameStroke) next_ = Next::newStroke;
    if (layer || newStroke) {
      pressure_ = 0;
      tiltX_ = 0;
      tiltY_ = 0;
    }
    if (!layer) wasDown_ = down;
  }

  ReferenceReading& result_;
  int pressure_ = 0;
  int tiltX_ = 0;
  int tiltY_ = 0;
  std::uint32_t time_ = 0;
  bool wasDown_ = false;
  Next next_ = Next::newLayer;
};

}  // namespace

ReferenceReading readByReferenceModel(const Bytes& bytes) {
  ReferenceReading result;
  const std::vector<Packet> packets = Splitter(bytes, result).split();
  Player player(result);
  for (const Packet& packet : packets)
    player.play(packet);
  return result;
}

}  // namespace pentest
