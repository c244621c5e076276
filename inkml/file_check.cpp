#include "inkml/file_check.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/file.h"

namespace Orvo {
namespace {

// The size of a file that can be positioned, which is at its start afterwards.
std::optional<std::int64_t> sizeOf(std::FILE* file) {
  if (!platform::seekToEnd(file)) return std::nullopt;
  const std::int64_t size = platform::tell(file);
  if (size < 0 || !platform::seekTo(file, 0)) return std::nullopt;
  return size;
}

// On some systems a folder can be opened and has an endless size: only reading fails.
bool firstByteCanBeRead(std::FILE* file) {
  platform::readByte(file);
  const bool good = std::ferror(file) == 0;
  return platform::seekTo(file, 0) && good;
}

bool readAll(std::FILE* file, std::string& bytes) {
  const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), file);
  const bool good = count == bytes.size() && std::ferror(file) == 0;
  return platform::seekTo(file, 0) && good;
}

// How many bytes must follow this one in UTF-8.
std::size_t followers(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte < 0xC2 || byte > 0xF4) return 0;
  return byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
}

bool isFollower(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

bool endsInsideCharacter(std::string_view bytes) {
  const std::string_view tail = bytes.substr(bytes.size() - std::min<std::size_t>(bytes.size(), 3));
  for (std::size_t i = 0; i < tail.size(); ++i) {
    const std::string_view rest = tail.substr(i + 1);
    const std::size_t needed = followers(tail[i]);
    if (needed > rest.size()) return true;
    const std::string_view own = rest.substr(0, needed);
    if (!std::all_of(own.begin(), own.end(), isFollower)) return true;
  }
  return false;
}

// CR LF and CR become LF, as in the library. After the first NUL nothing changes.
void unifyLineEnds(std::string& text) {
  const std::size_t first = std::string_view(text.c_str()).find('\r');
  if (first == std::string_view::npos) return;
  std::size_t target = first;
  std::size_t source = first;
  while (source < text.size() && text[source] != '\0') {
    const char c = text[source++];
    if (c == '\r' && source < text.size() && text[source] == '\n') ++source;
    text[target++] = c == '\r' ? '\n' : c;
  }
  if (source == text.size()) {
    text.resize(target);
  } else {
    text[target] = '\0';
  }
}

}  // namespace

int FileCheck::line() const {
  const std::size_t place = refusal == FileRefusal::cutCharacter ? text.size() : scan.offset;
  const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(place, text.size()));
  return 1 + static_cast<int>(std::count(text.begin(), end, '\n'));
}

FileCheck checkFile(std::FILE* file, XmlEncoding encoding) {
  FileCheck check;
  const std::optional<std::int64_t> size = sizeOf(file);
  if (!size || !firstByteCanBeRead(file)) {
    check.refusal = FileRefusal::unreadable;
    return check;
  }
  if (*size >= kFirstTooLarge) {
    check.refusal = FileRefusal::tooLarge;
    check.size = *size;
    return check;
  }
  std::string bytes(static_cast<std::size_t>(*size), '\0');
  if (!readAll(file, bytes)) {
    check.refusal = FileRefusal::unreadable;
    check.size = *size;
    return check;
  }
  return checkBytes(std::move(bytes), encoding);
}

FileCheck checkBytes(std::string bytes, XmlEncoding encoding) {
  FileCheck check;
  check.size = static_cast<std::int64_t>(bytes.size());
  const bool cut = endsInsideCharacter(bytes);
  check.text = std::move(bytes);
  unifyLineEnds(check.text);
  check.scan =
      scanFile(check.text, encoding, {.depth = kDeepestNesting, .attributes = kMostAttributes});
  if (cut || check.scan.end == ScanEnd::overrun) {
    check.refusal = FileRefusal::cutCharacter;
  } else if (check.scan.end == ScanEnd::tooDeep) {
    check.refusal = FileRefusal::tooDeep;
  } else if (check.scan.end == ScanEnd::tooManyAttributes) {
    check.refusal = FileRefusal::tooManyAttributes;
  }
  return check;
}

}  // namespace Orvo
