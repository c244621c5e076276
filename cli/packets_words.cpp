#include "cli/packets_words.h"

#include <new>

#include "cli/limits.h"
#include "cli/output_words.h"
#include "cli/packets_command.h"

namespace cli {

ExitStatus run(const PacketsWords& words) {
  PacketsOptions options;
  options.file = pathOf(words.file);
  options.kind = kindOf(words.kind);
  options.json = words.json;
  try {
    return listPackets(options);
  } catch (const std::bad_alloc&) {
    reportError(options.file, kNotEnoughMemory);
    return ExitStatus::failed;
  }
}

}  // namespace cli
