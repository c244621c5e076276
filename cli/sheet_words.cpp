#include "cli/sheet_words.h"

#include "cli/sheet_command.h"
#include "cli/terminal_text.h"

namespace cli {

namespace {

std::optional<SheetFormat> sheetFormatOf(const std::string& output) {
  const std::string ending = endingOf(pathOf(output));
  if (output == "-" || ending == "html" || ending == "htm") return SheetFormat::html;
  if (ending == "pdf") return SheetFormat::pdf;
  return {};
}

}  // namespace

ExitStatus run(const SheetWords& words) {
  SheetOptions options;
  take(words, options);
  if (const std::string wrong = wrongInputs(words); !wrong.empty()) return wrongUsage(wrong);
  options.output = pathOf(words.output);
  if (words.output == "-") options.outputs.output = options.output;
  options.title = words.title;
  options.replaceRecordings = words.force;
  const auto format = sheetFormatOf(words.output);
  if (!format) {
    return wrongUsage("the name of a contact sheet ends in .html or .pdf, unlike " +
                      inQuotes(words.output));
  }
  options.format = *format;
  return makeSheet(options);
}

}  // namespace cli
