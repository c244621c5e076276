#include "cli/limits.h"

#include "platform/limits.h"

namespace cli {

std::optional<std::string> refusalToOpenFiles() {
  // While the plug-in reads: its two outputs and where they went before, the way back to the
  // current folder, the recording, and the log or the brush library.
  constexpr int kAtTheSameTime = 7;
  if (platform::canOpenFiles(kAtTheSameTime)) return {};
  return kTooManyFiles;
}

}  // namespace cli
