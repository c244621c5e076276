#include "cli/info_words.h"

#include "cli/info_command.h"

namespace cli {

ExitStatus run(const InfoWords& words) {
  InfoOptions options;
  take(words, options);
  options.json = words.json;
  if (const std::string wrong = wrongInputs(words); !wrong.empty()) return wrongUsage(wrong);
  return tellAboutFiles(options);
}

}  // namespace cli
