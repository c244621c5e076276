#pragma once

#include <cstddef>
#include <string>

namespace Orvo {

/// Which bytes belong together: UTF-8, or what the declaration of the file says, by the XML
/// library's rules.
enum class XmlEncoding { utf8, declared };

/// Why the XML library reads no further.
enum class ScanEnd {
  wholeFile,
  failure,      ///< Broken markup: the library reports an error.
  text,         ///< Text outside of all elements; the library is content and ignores the rest.
  nul,          ///< A NUL byte outside of all elements, likewise.
  declaration,  ///< A declaration that it cannot read, outside of all elements, likewise.
  tooDeep,      ///< Not the library but the scan ends here: an element is nested too deep.
  overrun,      ///< The library would step past the end of the file.
};

/// How far the XML library comes with a file, and what it meets at the end.
struct FileScan {
  ScanEnd end = ScanEnd::wholeFile;
  std::size_t offset = 0;          ///< Where it ends; of an element nested too deep its start.
  int depth = 0;                   ///< Of the deepest element; 1 is a root.
  bool afterElement = false;       ///< A whole element stood outside of all others before the end.
  bool afterDocumentType = false;  ///< The node right before the end began with "<!DOCTYPE".
  bool afterInstruction = false;   ///< The node right before the end began with "<?".
};

/// Follows the library through `text` (line ends already LF, a NUL behind the last byte) without
/// building anything, in linear time and without recursion. Elements nested deeper than
/// `deepestAllowed` end the scan.
FileScan scanFile(const std::string& text, XmlEncoding encoding, int deepestAllowed);

}  // namespace Orvo
