#include "cli/view_words.h"

#include "cli/terminal_text.h"
#include "cli/view_command.h"

namespace cli {

ExitStatus run(const ViewWords& words) {
  OpenOptions options;
  take(words, options);
  if (const std::string wrong = wrongInputs(words); !wrong.empty()) return wrongUsage(wrong);
  if (words.messagesInPages && words.quiet) {
    return wrongUsage("give --messages-in-pages or --quiet, not both");
  }
  if (words.rescue && words.translate) return wrongUsage("give --rescue or --translate, not both");
  for (const std::string& word : words.files) {
    if (isFolder(word)) {
      return wrongUsage(inQuotes(word) + " is a folder; name the recordings to view");
    }
  }
  options.format = OutputFormat::html;
  options.picture.pressure = words.pressure;
  options.rescue = words.rescue;
  options.messagesInPages = words.messagesInPages;
  return viewFiles(options);
}

}  // namespace cli
