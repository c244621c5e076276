#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "inkml/file_scan.h"

namespace Orvo {

/// Why a file is not given to the XML library at all.
enum class FileRefusal {
  none,
  unreadable,  ///< A folder, a pipe, or a device that fails.
  tooLarge,    ///< 2 GiB and more: the library counts in 32 bits.
  tooDeep,  ///< Elements nested deeper than `deepestNesting`: the library would use up the stack.
  cutCharacter,  ///< It ends inside a UTF-8 character: the library would read past its buffer.
};

inline constexpr int deepestNesting = 500;  ///< The documents of this format nest five deep.
inline constexpr std::int64_t firstTooLarge = std::int64_t{1} << 31;  ///< In bytes.

struct FileCheck {
  FileRefusal refusal = FileRefusal::none;
  std::string text;       ///< The file's bytes as the library holds them: each line end is LF.
  FileScan scan;          ///< Where the library will end; not looked at for an empty file.
  std::int64_t size = 0;  ///< Of the file, in bytes.

  /// The line where the scan ended, or with a cut character the last one; from 1.
  int line() const;
};

/// Looks through an open file, at any position, before the XML library loads it. The file is at its
/// start afterwards, as far as it can be positioned.
FileCheck checkFile(std::FILE* file, XmlEncoding encoding);

/// The same for bytes in memory.
FileCheck checkBytes(std::string bytes, XmlEncoding encoding);

}  // namespace Orvo
