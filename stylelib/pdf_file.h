// The objects and streams of a PDF.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "stylelib/inflater.h"

namespace stylelib {

/// Just enough of a PDF to find its private streams: the objects by number, whatever the
/// cross-reference table says. All calls together take time in proportion to the file.
class PdfFile {
 public:
  /// The bytes must outlive this.
  explicit PdfFile(std::string_view bytes);

  /// The object numbers of the private blocks by their place, from 1. Damaged object streams are
  /// skipped.
  std::map<std::size_t, std::size_t> privateBlocks();

  /// Appends the decoded stream of an object to `out`. Returns what is wrong, as the end of a
  /// sentence, or an empty text; when something is wrong, `out` may hold a part of the stream.
  std::string_view appendStream(std::size_t number, std::string& out);

  /// The limit that this file exceeded, as a sentence, or an empty text. If a limit was exceeded,
  /// whatever was read must not be used.
  std::string_view exceeded() const { return exceeded_; }

 private:
  /// Where a stream is, according to its dictionary.
  struct Stream {
    std::size_t start;
    std::size_t untilEnd;  ///< bytes up to "endstream", or to the end of the file
    std::optional<std::size_t> length;
    bool lengthIsReference;  ///< `length` is the number of the object that holds it
    bool deflated;
    bool otherFilter;
  };

  struct Object {
    std::string_view dictionary;
    std::optional<std::size_t> value;  ///< of an object that is a number
    std::optional<Stream> stream;
    bool holdsObjects;
  };

  /// Searches for a word from positions that only move forward, so all searches make one pass.
  class ForwardSearch {
   public:
    ForwardSearch(std::string_view text, std::string_view word) : text_(text), word_(word) {}
    std::size_t from(std::size_t at);

   private:
    std::string_view text_;
    std::string_view word_;
    std::optional<std::size_t> found_;
  };

  void findObjects();
  std::optional<std::size_t> objectNumberBefore(std::size_t at) const;
  Object objectAt(std::size_t at);
  Stream streamAt(std::size_t at, std::string_view dictionary);
  std::string_view bytesOf(const Stream& stream) const;
  std::string_view append(const Stream& stream, std::string& out);
  std::string_view exceed(std::string_view limit) { return exceeded_ = limit; }

  std::string_view bytes_;
  ForwardSearch endOfObject_;
  ForwardSearch endOfStream_;
  std::map<std::size_t, Object> objects_;
  Inflater inflater_;
  std::size_t streamBytesLeft_;  ///< streams that do not overlap never need more
  std::size_t inflatedBytesLeft_;
  std::string_view exceeded_;
};

}  // namespace stylelib
