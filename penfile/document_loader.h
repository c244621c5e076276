// Loading a file as the plug-in does: a pen recording or an ink document.
#pragma once

#include <cstdint>

#include "model/document.h"
#include "penfile/shared_ref.h"

namespace Orvo {

/// The process-wide file kind: what `loadDocument` takes a file for. 0 is a pen recording, 1 an
/// InkML document.
inline constexpr std::uint32_t kPenFile = 0;
inline constexpr std::uint32_t kInkML = 1;
extern std::uint32_t fileKind;

/// Reads the file at `path` (wide, zero-terminated) according to the file kind. Points at nothing
/// when the file is incomplete or cannot be read, or the kind is unknown. For a pen recording the
/// log says why, except for a missing file and, after the descriptor, for a wrong length or a tag
/// at the very end of the file. For an ink document nothing is logged, but the point count of each
/// stroke of one that opens goes to standard output (see `dumpPointCounts`).
SharedRef<Document> loadDocument(const wchar_t* path);

}  // namespace Orvo
