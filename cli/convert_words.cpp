#include "cli/convert_words.h"

#include "cli/convert_command.h"
#include "cli/terminal_text.h"

namespace cli {

ExitStatus run(const ConvertWords& words) {
  ConvertOptions options;
  take(words, options);
  options.outputs.ending = formatOf("", words, "kvo");
  options.exact = words.exact;
  options.rescue = words.rescue;
  if (const std::string wrong = wrongOutputs(words); !wrong.empty()) return wrongUsage(wrong);
  if (words.rescue && words.translate) return wrongUsage("give --rescue or --translate, not both");
  // In small letters only: by any other name the document would be taken for a pen recording.
  if (options.outputs.ending != "kvo" && options.outputs.ending != "inkml") {
    return wrongUsage("the name of an ink document ends in .kvo or .inkml, not in " +
                      inQuotes(options.outputs.ending));
  }
  return convertFiles(options);
}

}  // namespace cli
