#include "cli/rescue_words.h"

#include "cli/output_format.h"
#include "cli/rescue_command.h"
#include "cli/terminal_text.h"

namespace cli {

ExitStatus run(const RescueWords& words) {
  RescueOptions options;
  take(words, options);
  options.outputs.keepsEndings = true;
  options.json = words.json;
  options.thorough = words.thorough;
  if (words.folder.empty()) options.outputs.mark = ".rescued";
  if (const std::string wrong = wrongOutputs(words); !wrong.empty()) return wrongUsage(wrong);
  if (words.json && words.output == "-") {
    return wrongUsage("--json and -o - both go to standard output; name a file for one of them");
  }
  if (parseOutputFormat(endingOf(pathOf(words.output)))) {
    return wrongUsage(inQuotes(words.output) +
                      " is not a name for a recording; give it the ending "
                      "of the damaged one");
  }
  return rescueFiles(options);
}

}  // namespace cli
