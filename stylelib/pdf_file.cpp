#include "stylelib/pdf_file.h"

#include <algorithm>
#include <charconv>

#include "stylelib/limits.h"

namespace stylelib {

namespace {

constexpr std::string_view kBlockKey = "/AIPrivateData";

bool isDigit(char character) {
  return character >= '0' && character <= '9';
}

std::optional<std::size_t> numberAt(std::string_view text, std::size_t at) {
  while (at < text.size() && (text[at] == ' ' || text[at] == '\r' || text[at] == '\n'))
    ++at;
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data() + at, text.data() + text.size(), number);
  return error == std::errc() ? std::optional(number) : std::nullopt;
}

bool contains(std::string_view text, std::string_view word) {
  return text.find(word) != std::string_view::npos;
}

void findBlocks(std::string_view text, std::map<std::size_t, std::size_t>& blocks) {
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

}  // namespace

PdfFile::PdfFile(std::string_view bytes)
    : bytes_(bytes),
      endOfObject_(bytes, "endobj"),
      endOfStream_(bytes, "endstream"),
      streamBytesLeft_(bytes.size()),
      inflatedBytesLeft_(kMostInflatedBytes) {
  findObjects();
}

std::size_t PdfFile::ForwardSearch::from(std::size_t at) {
  if (!found_ || *found_ < at) found_ = std::min(text_.find(word_, at), text_.size());
  return *found_;
}

void PdfFile::findObjects() {
  constexpr std::string_view kMark = " obj";
  std::size_t count = 0;
  for (std::size_t at = bytes_.find(kMark); at != std::string_view::npos;) {
    std::size_t next = at + kMark.size();
    if (const auto number = objectNumberBefore(at)) {
      if (++count > kMostObjects) {
        exceed("it has more than 100,000 objects");
        return;
      }
      const Object object = objectAt(next);
      next = object.stream ? object.stream->start : next + object.dictionary.size();
      objects_[*number] = object;
    }
    at = bytes_.find(kMark, next);
  }
}

// The first of the two numbers in "12 0 obj".
std::optional<std::size_t> PdfFile::objectNumberBefore(std::size_t at) const {
  std::size_t start = at;
  while (start > 0 && isDigit(bytes_[start - 1]))
    --start;
  if (start == at || start == 0 || bytes_[start - 1] != ' ') return {};
  std::size_t first = --start;
  while (first > 0 && isDigit(bytes_[first - 1]))
    --first;
  return first == start ? std::nullopt : numberAt(bytes_.substr(0, start), first);
}

PdfFile::Object PdfFile::objectAt(std::size_t at) {
  const std::string_view object = bytes_.substr(at, endOfObject_.from(at) - at);
  const std::size_t keyword = object.find("stream");
  const std::string_view dictionary = object.substr(0, keyword);
  Object found{dictionary, numberAt(dictionary, 0), {}, contains(dictionary, "/ObjStm")};
  if (keyword != std::string_view::npos) found.stream = streamAt(at + keyword + 6, dictionary);
  return found;
}

PdfFile::Stream PdfFile::streamAt(std::size_t at, std::string_view dictionary) {
  if (at < bytes_.size() && bytes_[at] == '\r') ++at;
  if (at < bytes_.size() && bytes_[at] == '\n') ++at;
  Stream stream{.start = at,
                .untilEnd = endOfStream_.from(at) - at,
                .length = {},
                .lengthIsReference = false,
                .deflated = contains(dictionary, "/FlateDecode"),
                .otherFilter = false};
  const std::size_t filter = dictionary.find("/Filter");
  stream.otherFilter = !stream.deflated && filter != std::string_view::npos &&
                       contains(dictionary.substr(filter), "Decode");

  const std::size_t key = dictionary.find("/Length");
  if (key == std::string_view::npos) return stream;
  const std::string_view rest = dictionary.substr(key + 7);
  stream.length = numberAt(rest, 0);
  stream.lengthIsReference = contains(rest.substr(0, rest.find_first_of("/>")), " R");
  return stream;
}

// As many bytes as the dictionary says, directly or in another object; otherwise up to "endstream".
std::string_view PdfFile::bytesOf(const Stream& stream) const {
  std::optional<std::size_t> length = stream.length;
  if (length && stream.lengthIsReference) {
    const auto other = objects_.find(*length);
    length = other == objects_.end() ? std::nullopt : other->second.value;
  }
  if (!length || *length > bytes_.size() - stream.start) length = stream.untilEnd;
  return bytes_.substr(stream.start, *length);
}

std::map<std::size_t, std::size_t> PdfFile::privateBlocks() {
  std::map<std::size_t, std::size_t> blocks;
  std::string inside;
  for (const auto& [number, object] : objects_) {
    findBlocks(object.dictionary, blocks);
    if (!object.holdsObjects || !object.stream) continue;
    inside.clear();
    if (append(*object.stream, inside).empty()) findBlocks(inside, blocks);
    if (!exceeded_.empty()) break;
  }
  return blocks;
}

std::string_view PdfFile::appendStream(std::size_t number, std::string& out) {
  const auto found = objects_.find(number);
  if (found == objects_.end() || !found->second.stream) {
    return "a block of its native data is missing";
  }
  return append(*found->second.stream, out);
}

std::string_view PdfFile::append(const Stream& stream, std::string& out) {
  constexpr std::string_view kOverlap = "its streams overlap";
  if (stream.otherFilter) return "a block of its native data is not compressed with FlateDecode";
  const std::string_view bytes = bytesOf(stream);
  if (!stream.deflated) {
    if (bytes.size() > streamBytesLeft_) return exceed(kOverlap);
    streamBytesLeft_ -= bytes.size();
    out += bytes;
    return {};
  }

  const std::size_t before = out.size();
  const auto [outcome, consumed] = inflater_.append(bytes, out, before + inflatedBytesLeft_);
  inflatedBytesLeft_ -= out.size() - before;
  if (outcome == Inflater::Outcome::tooLarge) return exceed("it inflates to more than 16 MiB");
  if (consumed > streamBytesLeft_) return exceed(kOverlap);
  streamBytesLeft_ -= consumed;
  return outcome == Inflater::Outcome::whole ? "" : "a block of its native data is damaged";
}

}  // namespace stylelib
