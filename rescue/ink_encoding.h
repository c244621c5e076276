// Ink documents in another encoding than UTF-8, which is the only one that the plug-in reads whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rescue {

enum class InkEncoding : std::uint8_t { utf16LittleEndian, utf16BigEndian, latin1, windows1252 };

/// "UTF-16", "Latin-1" or "Windows-1252".
std::string_view nameOf(InkEncoding encoding);

bool isUtf16(InkEncoding encoding);

/// The encoding of the document, if it is one of these and makes a difference. UTF-16 is known by
/// its zero bytes, with or without a byte order mark; the others are what the document declares.
std::optional<InkEncoding> encodingOf(std::string_view document);

/// The same document in UTF-8, which its declaration names, too.
class Utf8Copy {
 public:
  /// `document` must outlive this. What is no character becomes U+FFFD. Where a byte of UTF-16 is
  /// missing, reading goes on with the other half of the bytes.
  Utf8Copy(std::string_view document, InkEncoding encoding);

  const std::string& text() const { return text_; }

  /// Where the bytes of the text stood in the document: replaces each offset, which may be one
  /// behind the end. Takes them in any order.
  void toPlaces(std::vector<std::size_t*> offsets) const;

 private:
  void declareUtf8();

  std::string_view document_;
  InkEncoding encoding_;
  std::string text_;
  std::size_t changedAt_ = 0;  ///< Behind the name of the encoding in the declaration ...
  std::size_t shortened_ = 0;  ///< ... the text has so many bytes less.
};

}  // namespace rescue
