#include "cli/open_words.h"

#include "cli/open_command.h"
#include "cli/output_format.h"
#include "cli/picture_words.h"
#include "cli/terminal_text.h"

namespace cli {

namespace fs = std::filesystem;

namespace {

/// What is wrong with a word that names no format.
std::string unknownFormat(const OpenWords& words, const std::string& word) {
  if (!word.empty()) {
    return inQuotes(word) + " is not a format that can be written; choose one of " +
           listOutputFormats();
  }
  return inQuotes(words.output) + " has no ending that names a format; add one or give --format (" +
         listOutputFormats() + ")";
}

/// What is wrong where the name of the output contradicts the format, or nothing.
std::string wrongFormat(const OpenWords& words, OutputFormat format) {
  const fs::path output = pathOf(words.output);
  const std::optional<OutputFormat> named = parseOutputFormat(endingOf(output));
  const bool contradicts = named ? *named != format : isNamedAsRecording(output);
  if (!contradicts) return {};
  return inQuotes(words.output) + " does not fit --format " + std::string(nameOf(format)) +
         "; leave one of them out";
}

/// What is wrong with the options that were given, where one has no effect on the format.
std::string wrongForFormat(const OpenWords& words, OutputFormat format) {
  if (format != OutputFormat::png && (words.dpi || words.size)) {
    return std::string(words.dpi ? "--dpi" : "--size") + " is for png only; leave it out with " +
           std::string(nameOf(format));
  }
  if (format == OutputFormat::json) {
    const std::string forPictures = " is for pictures; leave it out with json";
    if (words.style) return "--style" + forPictures;
    if (words.pressure) return "--pressure" + forPictures;
    if (words.background) return "--background" + forPictures;
  }
  return words.dpi && words.size ? "give --dpi or --size, not both" : "";
}

/// Chooses the format; gives what is wrong with the words about it, or nothing.
std::string chooseFormat(const OpenWords& words, OpenOptions& options) {
  const std::string asked = formatOf(words.format, words, "svg");
  const std::optional<OutputFormat> format = parseOutputFormat(asked);
  if (!format) return unknownFormat(words, asked);
  options.format = *format;
  options.outputs.ending = nameOf(*format);
  if (std::string wrong = wrongFormat(words, *format); !wrong.empty()) return wrong;
  if (std::string wrong = wrongEnding(words.journal, "a journal"); !wrong.empty()) return wrong;
  return wrongForFormat(words, *format);
}

/// Takes the words about the picture; gives what is wrong with them, or nothing.
std::string describePicture(const OpenWords& words, render::Options& picture) {
  picture.pressure = words.pressure;
  picture.centreLines = words.style == "centerline";
  picture.dpi = words.dpi.value_or(picture.dpi);
  if (words.background) {
    picture.background = parseColor(*words.background);
    if (!picture.background) {
      return inQuotes(*words.background) + " is not a colour; write white, black, #rgb or #rrggbb";
    }
  }
  if (words.size) {
    picture.size = parseSize(*words.size);
    if (!picture.size) {
      return inQuotes(*words.size) + " is not a size; write 800x600, or 800 for the width only";
    }
  }
  return {};
}

}  // namespace

ExitStatus run(const OpenWords& words) {
  OpenOptions options;
  take(words, options);
  if (!words.journal.empty()) options.journal = pathOf(words.journal);
  options.module = pathOf(words.module);
  if (!words.logFolder.empty()) options.logFolder = pathOf(words.logFolder);
  options.rescue = words.rescue;
  options.verbose = words.verbose;
  options.builtInLibrary = !words.noLibrary;

  if (const std::string wrong = wrongOutputs(words); !wrong.empty()) return wrongUsage(wrong);
  if (words.rescue && words.translate) return wrongUsage("give --rescue or --translate, not both");
  if (options.journal && (words.files.size() > 1 || isFolder(words.files.front()))) {
    return wrongUsage("--journal takes one FILE");
  }
  if (const std::string wrong = chooseFormat(words, options); !wrong.empty()) {
    return wrongUsage(wrong);
  }
  if (const std::string wrong = describePicture(words, options.picture); !wrong.empty()) {
    return wrongUsage(wrong);
  }
  return openFiles(options);
}

}  // namespace cli
