#include "cli/ink_words.h"

#include <new>

#include "cli/ink_command.h"
#include "cli/limits.h"
#include "cli/output_words.h"

namespace cli {

ExitStatus run(const InkWords& words) {
  InkOptions options;
  options.file = pathOf(words.file);
  options.output = pathOf(words.output);
  options.kind = kindOf(words.kind);
  options.replaceRecordings = words.force;
  options.quiet = words.quiet;
  options.rescue = words.rescue;
  if (const std::string wrong = wrongEnding(words.output, "the JSON of ink"); !wrong.empty()) {
    return wrongUsage(wrong);
  }
  try {
    return showInk(options);
  } catch (const std::bad_alloc&) {
    reportError(options.file, kNotEnoughMemory);
    return ExitStatus::failed;
  }
}

}  // namespace cli
