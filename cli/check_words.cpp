#include "cli/check_words.h"

#include "cli/check_command.h"

namespace cli {

ExitStatus run(const CheckWords& words) {
  CheckOptions options;
  take(words, options);
  if (const std::string wrong = wrongInputs(words); !wrong.empty()) return wrongUsage(wrong);
  return checkFiles(options);
}

}  // namespace cli
