// How far the XML library reads a file, found out without building a tree.
#pragma once

#include <cstddef>
#include <string>

namespace Orvo {

/// Which bytes make up one character: those of UTF-8, or those of the encoding that the file
/// declares, by the XML library's rules.
enum class XmlEncoding { utf8, declared };

/// Why the XML library reads no further.
enum class ScanEnd {
  wholeFile,
  failure,      ///< Broken markup: the library reports an error.
  text,         ///< Text outside all elements; the library reports no error and ignores the rest.
  nul,          ///< A NUL byte outside all elements, likewise.
  declaration,  ///< A declaration that it cannot read, outside all elements, likewise.
  tooDeep,      ///< The scan stops here, not the library: an element is nested too deep.
  tooManyAttributes,  ///< Likewise: an element has too many attributes.
  overrun,            ///< The library would step past the end of the file.
};

/// How far the XML library reads a file, and what stops it there.
struct FileScan {
  ScanEnd end = ScanEnd::wholeFile;
  std::size_t offset = 0;     ///< Where it stops; for an element beyond a limit, where that starts.
  int depth = 0;              ///< Of the deepest element; 1 is a root.
  bool afterElement = false;  ///< There is a whole top-level element before the end.
  bool afterDocumentType = false;  ///< The node right before the end began with "<!DOCTYPE".
  bool afterInstruction = false;   ///< The node right before the end began with "<?".
};

/// An element beyond one of these limits ends the scan.
struct ScanLimits {
  int depth;
  int attributes;
};

/// Follows the library through `text`, whose lines already end with LF, without building anything,
/// in linear time and without recursion.
FileScan scanFile(const std::string& text, XmlEncoding encoding, ScanLimits limits);

}  // namespace Orvo
