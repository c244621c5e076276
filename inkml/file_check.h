// Keeps files away from the XML library that it would not survive.
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
  tooLarge,    ///< 2 GiB or more: the library counts in 32 bits.
  tooDeep,  ///< Elements nested deeper than `kDeepestNesting`: the library would use up the stack.
  tooManyAttributes,  ///< More than `kMostAttributes` on an element: the library compares each with
                      ///< all before it, and 120,000 of them would take it a minute.
  cutCharacter,       ///< It ends inside a UTF-8 character: the library would read past its buffer.
};

inline constexpr int kDeepestNesting = 500;     ///< The documents of this format nest five deep.
inline constexpr int kMostAttributes = 10'000;  ///< Those of this format have five at most.
inline constexpr std::int64_t kFirstTooLarge = std::int64_t{1} << 31;  ///< In bytes.

struct FileCheck {
  FileRefusal refusal = FileRefusal::none;
  std::string text;       ///< The file's bytes as the library sees them: each line ends with LF.
  FileScan scan;          ///< How far the library will read.
  std::int64_t size = 0;  ///< Of the file, in bytes.

  /// The line where the scan ended, or the last one if the file ends inside a character; from 1.
  int line() const;
};

/// Looks through an open file, from its start, before the XML library loads it. Afterwards the file
/// is at its start again, if it can be positioned at all.
FileCheck checkFile(std::FILE* file, XmlEncoding encoding);

/// The same for bytes in memory.
FileCheck checkBytes(std::string bytes, XmlEncoding encoding);

}  // namespace Orvo
