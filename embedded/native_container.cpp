#include "embedded/native_container.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <zlib.h>

namespace embedded {

namespace {

// A library of styles has some tens of kilobytes.
constexpr std::size_t kMostText = std::size_t{16} << 20;
constexpr std::string_view kOneRunMark = "%AI12_CompressedData";
constexpr std::string_view kBlockKey = "/AIPrivateData";

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

/// Appends what the bytes inflate to, at most `most` bytes. False when they are damaged or too
/// much; what came before is kept.
bool inflateTo(std::string_view bytes, std::string& out, std::size_t most) {
  z_stream stream{};
  if (inflateInit(&stream) != Z_OK) return false;
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  std::array<char, 65536> buffer{};
  int state = Z_OK;
  while (state == Z_OK && out.size() < most) {
    stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
    stream.avail_out = static_cast<uInt>(buffer.size());
    state = inflate(&stream, Z_NO_FLUSH);
    out.append(buffer.data(), std::min(buffer.size() - stream.avail_out, most - out.size()));
  }
  inflateEnd(&stream);
  return state == Z_STREAM_END;
}

std::optional<std::size_t> numberAt(std::string_view text, std::size_t at) {
  while (at < text.size() && (text[at] == ' ' || text[at] == '\r' || text[at] == '\n'))
    ++at;
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data() + at, text.data() + text.size(), number);
  return error == std::errc() ? std::optional(number) : std::nullopt;
}

/// One object of a PDF: its dictionary as text, and where its stream begins.
struct PdfObject {
  std::string_view dictionary;
  std::optional<std::size_t> stream;
};

/// As much of a PDF as it takes to find private streams: the objects by number, whatever the
/// cross-reference table says.
class PdfFile {
 public:
  explicit PdfFile(std::string_view bytes) : bytes_(bytes) { findObjects(); }

  /// The object numbers of the private blocks by their place, from 1.
  std::map<std::size_t, std::size_t> privateBlocks() const {
    std::map<std::size_t, std::size_t> blocks;
    for (const auto& [number, object] : objects_) {
      findBlocks(object.dictionary, blocks);
      if (object.dictionary.find("/ObjStm") != std::string_view::npos) {
        findBlocks(streamOf(object).value_or(""), blocks);
      }
    }
    return blocks;
  }

  /// A stream without its filter; nothing when there is none, or it is damaged.
  std::optional<std::string> stream(std::size_t number) const {
    const auto found = objects_.find(number);
    return found == objects_.end() ? std::nullopt : streamOf(found->second);
  }

 private:
  void findObjects() {
    constexpr std::string_view kMark = " obj";
    for (std::size_t at = bytes_.find(kMark); at != std::string_view::npos;) {
      std::size_t next = at + kMark.size();
      if (const auto number = objectNumberBefore(at)) {
        const PdfObject object = objectAt(next);
        next = object.stream.value_or(next + object.dictionary.size());
        objects_[*number] = object;
      }
      at = bytes_.find(kMark, next);
    }
  }

  // The first of the two numbers in "12 0 obj".
  std::optional<std::size_t> objectNumberBefore(std::size_t at) const {
    std::size_t start = at;
    while (start > 0 && isDigit(bytes_[start - 1]))
      --start;
    if (start == at || start == 0 || bytes_[start - 1] != ' ') return {};
    std::size_t first = --start;
    while (first > 0 && isDigit(bytes_[first - 1]))
      --first;
    return first == start ? std::nullopt : numberAt(bytes_.substr(0, start), first);
  }

  PdfObject objectAt(std::size_t at) const {
    const std::size_t end = std::min(bytes_.find("endobj", at), bytes_.size());
    const std::string_view object = bytes_.substr(at, end - at);
    const std::size_t keyword = object.find("stream");
    if (keyword == std::string_view::npos) return {object, {}};
    std::size_t data = at + keyword + 6;
    if (data < bytes_.size() && bytes_[data] == '\r') ++data;
    if (data < bytes_.size() && bytes_[data] == '\n') ++data;
    return {object.substr(0, keyword), data};
  }

  static void findBlocks(std::string_view text, std::map<std::size_t, std::size_t>& blocks) {
    for (std::size_t at = text.find(kBlockKey); at != std::string_view::npos;) {
      at += kBlockKey.size();
      const auto place = numberAt(text, at);
      std::size_t behind = at;
      while (behind < text.size() && isDigit(text[behind]))
        ++behind;
      const auto object = numberAt(text, behind);
      if (place && object) blocks[*place] = *object;
      at = text.find(kBlockKey, at);
    }
  }

  std::optional<std::string> streamOf(const PdfObject& object) const {
    if (!object.stream) return {};
    const std::string_view data = bytes_.substr(*object.stream, lengthOf(object));
    if (object.dictionary.find("/FlateDecode") == std::string_view::npos) return std::string(data);
    std::string text;
    const bool whole = inflateTo(data, text, budget_);
    budget_ -= text.size();
    return whole ? std::optional(text) : std::nullopt;
  }

  // As the dictionary says it, directly or by another object; else up to "endstream".
  std::size_t lengthOf(const PdfObject& object) const {
    const std::size_t left = bytes_.size() - *object.stream;
    const std::size_t key = object.dictionary.find("/Length");
    if (key != std::string_view::npos) {
      const std::string_view rest = object.dictionary.substr(key + 7);
      std::optional<std::size_t> length = numberAt(rest, 0);
      const std::size_t reference = rest.find(" R");
      if (length && reference != std::string_view::npos && reference < rest.find_first_of("/>")) {
        const auto other = objects_.find(*length);
        length = other == objects_.end() ? std::nullopt : numberAt(other->second.dictionary, 0);
      }
      if (length && *length <= left) return *length;
    }
    return std::min(bytes_.find("endstream", *object.stream), bytes_.size()) - *object.stream;
  }

  std::string_view bytes_;
  std::map<std::size_t, PdfObject> objects_;
  mutable std::size_t budget_ = kMostText;  // for all that is inflated
};

NativeText refuse(const char* problem) {
  return {{}, problem};
}

NativeText unwrapPdf(std::string_view bytes) {
  const PdfFile file(bytes);
  NativeText native;
  for (const auto& [place, number] : file.privateBlocks()) {
    if (place < 2) continue;  // the first block is a preamble
    const std::optional<std::string> block = file.stream(number);
    if (!block) return refuse("a block of its native data is damaged or missing");
    native.text += *block;
    if (native.text.size() > kMostText)
      return refuse("its native data is larger than any library's");
  }
  if (native.text.empty()) {
    return refuse("it is a PDF without native data; save it again with native data in it");
  }
  if (!native.text.starts_with(kOneRunMark)) return native;

  NativeText inflated;
  if (!inflateTo(std::string_view(native.text).substr(kOneRunMark.size()), inflated.text,
                 kMostText)) {
    return refuse("its compressed native data is damaged");
  }
  return inflated;
}

}  // namespace

NativeText unwrapNative(std::span<const unsigned char> bytes) {
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (text.size() > kMostText) return refuse("it is larger than any library");
  if (text.starts_with("%PDF-")) return unwrapPdf(text);
  if (text.starts_with("%!PS-Adobe")) return {std::string(text), {}};
  if (text.empty()) return refuse("it is empty");
  return refuse("it is no native file: it begins with neither %PDF- nor %!PS-Adobe");
}

}  // namespace embedded
