// The command line of penwick.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <iostream>
#include <memory>
#include <sstream>

#include "cli/convert_command.h"
#include "cli/ink_command.h"
#include "cli/limits.h"
#include "cli/open_command.h"
#include "cli/picture_words.h"
#include "cli/terminal_text.h"
#include "platform/command_line.h"
#include "platform/limits.h"
#include "platform/standard_streams.h"

namespace {

using cli::ExitStatus;

// The words of the command line as they were given.
struct OutputWords {
  std::vector<std::string> files;
  std::string kind;
  std::string output;
  std::string folder;
  bool force = false;
  bool quiet = false;
};

struct OpenWords : OutputWords {
  std::string format;
  std::string journal;
  std::string module;
  std::string logFolder;
  std::string style = "outline";
  std::string background;
  std::string size;
  std::optional<double> pressure;
  double dpi = render::Options().dpi;
  bool verbose = false;
  bool noLibrary = false;
};

struct ConvertWords : OutputWords {
  bool exact = false;
};

struct InkWords {
  std::string file;
  std::string output = "-";
  std::string kind;
  bool force = false;
  bool quiet = false;
};

// Refuses an empty name, such as that of a variable that is not set.
const CLI::Validator kNotEmpty(
    [](const std::string& name) { return name.empty() ? "the name is empty" : ""; }, "");

constexpr char kRecordings[] =
    "pen recordings (.pnx, .eli) and ink documents (.kvo, .inkml); - is standard input";

std::string inQuotes(const std::string& word) {
  return "'" + cli::shortened(word) + "'";
}

CLI::Validator oneOf(std::vector<std::string> choices) {
  return CLI::Validator(
      [choices = std::move(choices)](const std::string& word) {
        if (std::ranges::find(choices, word) != choices.end()) return std::string();
        return inQuotes(word) + " is not one of " + CLI::detail::join(choices, ", ");
      },
      "");
}

CLI::Validator numberFrom(double least, double most, const std::string& example) {
  return CLI::Validator(
      [=](const std::string& word) {
        double value = 0;
        const char* const last = word.data() + word.size();
        const auto [end, error] = std::from_chars(word.data(), last, value);
        // No comparison holds for what is not a number.
        if (error == std::errc() && end == last && value >= least && value <= most) {
          return std::string();
        }
        std::ostringstream range;
        range.precision(9);
        range << " is not a number from " << least << " to " << most << ", such as " << example;
        return inQuotes(word) + range.str();
      },
      "");
}

void addQuiet(CLI::App* command, bool& quiet) {
  command->add_flag("-q,--quiet", quiet, "print only errors and what the plug-in did wrong");
}

void addOutputs(CLI::App* command, OutputWords& words, const char* result) {
  command->add_option("FILE", words.files, kRecordings)
      ->required()
      ->check(kNotEmpty)
      ->type_name("");
  command->add_option("-o,--output", words.output, std::string(result) + "; - is standard output")
      ->check(kNotEmpty)
      ->type_name("OUT");
  command
      ->add_option("--out-dir", words.folder,
                   "folder for the results, each named after its FILE; created if missing")
      ->check(kNotEmpty)
      ->type_name("DIR");
  command->add_flag("--force", words.force, "overwrite results and recordings that already exist");
  addQuiet(command, words.quiet);
}

void addKind(CLI::App* command, std::string& kind) {
  command->add_option("--as", kind, "read FILE as pen or inkml, whatever its name and contents")
      ->check(oneOf({"pen", "inkml"}))
      ->type_name("KIND");
}

CLI::App* addOpen(CLI::App& app, OpenWords& words) {
  CLI::App* open = app.add_subcommand("open", "open recordings through the plug-in and draw them");
  addOutputs(open, words, "where the drawing of one FILE goes (.svg, .pdf, .png, .json)");
  open->add_option("--format", words.format,
                   "svg, pdf, png or json; by default the ending of OUT, or svg")
      ->type_name("F");
  open->add_option("--style", words.style,
                   "outline: the strokes as the brush draws them (default); "
                   "centerline: plain open lines")
      ->check(oneOf({"outline", "centerline"}))
      ->type_name("S");
  open->add_option("--pressure", words.pressure,
                   "0 to 1: the pressure with which to draw recordings that have none")
      ->check(numberFrom(0, 1, "0.5"))
      ->type_name("P");
  open->add_option("--background", words.background,
                   "white, black, #rgb or #rrggbb; transparent by default")
      ->type_name("COLOUR");
  open->add_option("--dpi", words.dpi, "pixels per inch of a PNG; 150 by default")
      ->check(numberFrom(1, 1e6, "300"))
      ->type_name("N");
  open->add_option("--size", words.size,
                   "largest size of a PNG in pixels, or W for the width only; use this or --dpi")
      ->type_name("WxH");
  open->add_option("--journal", words.journal,
                   "write every call that the plug-in makes to the host, one line of JSON each")
      ->check(kNotEmpty)
      ->type_name("CALLS.jsonl");
  open->add_flag("--no-built-in-library", words.noLibrary,
                 "use the brush style library in your folder only, not the built-in one");
  open->add_option("--module", words.module, "use this plug-in module instead of the bundled one")
      ->type_name("FILE.aip");
  open->add_option("--log-dir", words.logFolder,
                   "folder for the plug-in's log, created if missing; by default your own state "
                   "folder")
      ->check(kNotEmpty)
      ->type_name("DIR");
  addKind(open, words.kind);
  open->add_flag("-v,--verbose", words.verbose,
                 "show what the plug-in printed, and how many unknown packets it skipped");
  return open;
}

CLI::App* addConvert(CLI::App& app, ConvertWords& words) {
  CLI::App* convert = app.add_subcommand("convert", "write recordings as ink documents (InkML)");
  addOutputs(convert, words, "where the ink document of one FILE goes (.kvo, .inkml)");
  addKind(convert, words.kind);
  convert->add_flag(
      "--exact", words.exact,
      "keep the tenths of coordinates, for other programs; the plug-in cuts them off");
  return convert;
}

CLI::App* addInk(CLI::App& app, InkWords& words) {
  CLI::App* ink = app.add_subcommand("ink", "show the ink document of a recording as JSON");
  ink->add_option(
         "FILE", words.file,
         "a pen recording (.pnx, .eli) or ink document (.kvo, .inkml); - is standard input")
      ->required()
      ->check(kNotEmpty)
      ->type_name("");
  ink->add_option("-o,--output", words.output, "where the JSON goes; - is standard output")
      ->check(kNotEmpty)
      ->type_name("OUT.json");
  ink->add_flag("--force", words.force, "overwrite a recording that already exists");
  addKind(ink, words.kind);
  addQuiet(ink, words.quiet);
  return ink;
}

ExitStatus wrongUsage(const std::string& sentence) {
  std::fprintf(stderr, "penwick: %s\n", cli::printable(sentence).c_str());
  return ExitStatus::wrongUsage;
}

// The ending of a name without its dot.
std::string ending(const std::filesystem::path& path) {
  const std::string extension = cli::nativeName(path.extension());
  return extension.empty() ? extension : extension.substr(1);
}

std::optional<cli::FileKind> kindOf(const std::string& word) {
  if (word == "pen") return cli::FileKind::pen;
  if (word == "inkml") return cli::FileKind::inkml;
  return {};
}

std::vector<std::filesystem::path> pathsOf(const std::vector<std::string>& words) {
  std::vector<std::filesystem::path> paths;
  paths.reserve(words.size());
  for (const std::string& word : words)
    paths.push_back(cli::pathOf(word));
  return paths;
}

cli::OutputPlan planOf(const OutputWords& words) {
  cli::OutputPlan plan;
  if (!words.output.empty()) plan.output = cli::pathOf(words.output);
  plan.folder = cli::pathOf(words.folder);
  plan.replaceExisting = words.force;
  return plan;
}

/// What is wrong with the places given for the results, or nothing.
std::string wrongOutputs(const OutputWords& words) {
  if (words.output.empty()) {
    const bool isUnnamed = std::ranges::find(words.files, "-") != words.files.end();
    return isUnnamed ? "a result of standard input cannot be named after it; use -o" : "";
  }
  if (words.files.size() > 1) return "-o takes one FILE; use --out-dir for several";
  return words.folder.empty() ? "" : "give -o or --out-dir, not both";
}

/// The name of the format that is asked for by its option, else by the ending of the output, else
/// the usual one.
std::string formatOf(const std::string& asked, const OutputWords& words, const char* usual) {
  if (!asked.empty()) return asked;
  return words.output.empty() || words.output == "-" ? usual : ending(cli::pathOf(words.output));
}

/// The format that a file's ending names.
std::optional<cli::OutputFormat> formatByName(const std::filesystem::path& file) {
  return cli::parseOutputFormat(ending(file));
}

/// What is wrong with a word that names no format.
std::string unknownFormat(const OpenWords& words, const std::string& word) {
  if (!word.empty()) {
    return inQuotes(word) + " is not a format that can be written; choose one of " +
           cli::listOutputFormats();
  }
  return inQuotes(words.output) + " has no ending that names a format; add one or give --format (" +
         cli::listOutputFormats() + ")";
}

/// What is wrong where the name of the output contradicts the format, or nothing.
std::string wrongFormat(const OpenWords& words, cli::OutputFormat format) {
  const std::filesystem::path output = cli::pathOf(words.output);
  const std::optional<cli::OutputFormat> named = formatByName(output);
  const bool contradicts = named ? *named != format : cli::isNamedAsRecording(output);
  if (!contradicts) return {};
  return inQuotes(words.output) + " does not fit --format " + std::string(cli::nameOf(format)) +
         "; leave one of them out";
}

/// What is wrong with the name of a file that gets JSON, or nothing: its ending may be any but that
/// of a picture or a recording.
std::string wrongEnding(const std::string& output, const std::string& content) {
  const std::filesystem::path path = cli::pathOf(output);
  const std::optional<cli::OutputFormat> named = formatByName(path);
  const bool contradicts =
      named ? *named != cli::OutputFormat::json : cli::isNamedAsRecording(path);
  if (!contradicts) return {};
  return inQuotes(output) + " is not a name for " + content + "; give it another ending";
}

/// What is wrong with the options that were given, where one has no effect on the format.
std::string wrongForFormat(const CLI::App& open, cli::OutputFormat format) {
  const auto isGiven = [&open](const char* option) { return open.count(option) > 0; };
  for (const char* option : {"--dpi", "--size"}) {
    if (format != cli::OutputFormat::png && isGiven(option)) {
      return std::string(option) + " is for png only; leave it out with " +
             std::string(cli::nameOf(format));
    }
  }
  for (const char* option : {"--style", "--pressure", "--background"}) {
    if (format == cli::OutputFormat::json && isGiven(option)) {
      return std::string(option) + " is for pictures; leave it out with json";
    }
  }
  return isGiven("--dpi") && isGiven("--size") ? "give --dpi or --size, not both" : "";
}

ExitStatus runOpen(const CLI::App& open, const OpenWords& words) {
  cli::OpenOptions options;
  options.files = pathsOf(words.files);
  options.outputs = planOf(words);
  if (!words.journal.empty()) options.journal = cli::pathOf(words.journal);
  options.module = cli::pathOf(words.module);
  if (!words.logFolder.empty()) options.logFolder = cli::pathOf(words.logFolder);
  options.kind = kindOf(words.kind);
  options.quiet = words.quiet;
  options.verbose = words.verbose;
  options.builtInLibrary = !words.noLibrary;
  options.picture.pressure = words.pressure;
  options.picture.centreLines = words.style == "centerline";
  options.picture.dpi = words.dpi;

  if (const std::string wrong = wrongOutputs(words); !wrong.empty()) return wrongUsage(wrong);
  if (options.journal && options.files.size() > 1) return wrongUsage("--journal takes one FILE");
  const std::string asked = formatOf(words.format, words, "svg");
  const std::optional<cli::OutputFormat> format = cli::parseOutputFormat(asked);
  if (!format) return wrongUsage(unknownFormat(words, asked));
  options.format = *format;
  options.outputs.ending = cli::nameOf(*format);
  if (const std::string wrong = wrongFormat(words, *format); !wrong.empty()) {
    return wrongUsage(wrong);
  }
  if (const std::string wrong = wrongEnding(words.journal, "a journal"); !wrong.empty()) {
    return wrongUsage(wrong);
  }
  if (const std::string wrong = wrongForFormat(open, *format); !wrong.empty()) {
    return wrongUsage(wrong);
  }
  if (!words.background.empty()) {
    options.picture.background = cli::parseColor(words.background);
    if (!options.picture.background) {
      return wrongUsage(inQuotes(words.background) +
                        " is not a colour; write white, black, #rgb or #rrggbb");
    }
  }
  if (!words.size.empty()) {
    options.picture.size = cli::parseSize(words.size);
    if (!options.picture.size) {
      return wrongUsage(inQuotes(words.size) +
                        " is not a size; write 800x600, or 800 for the width only");
    }
  }
  return cli::openFiles(options);
}

ExitStatus runConvert(const ConvertWords& words) {
  cli::ConvertOptions options;
  options.files = pathsOf(words.files);
  options.outputs = planOf(words);
  options.outputs.ending = formatOf("", words, "kvo");
  options.kind = kindOf(words.kind);
  options.exact = words.exact;
  options.quiet = words.quiet;
  if (const std::string wrong = wrongOutputs(words); !wrong.empty()) return wrongUsage(wrong);
  // In small letters only: by any other name the document would be taken for a pen recording.
  if (options.outputs.ending != "kvo" && options.outputs.ending != "inkml") {
    return wrongUsage("the name of an ink document ends in .kvo or .inkml, not in " +
                      inQuotes(options.outputs.ending));
  }
  return cli::convertFiles(options);
}

ExitStatus runInk(const InkWords& words) {
  cli::InkOptions options;
  options.file = cli::pathOf(words.file);
  options.output = cli::pathOf(words.output);
  options.kind = kindOf(words.kind);
  options.replaceRecordings = words.force;
  options.quiet = words.quiet;
  if (const std::string wrong = wrongEnding(words.output, "the JSON of ink"); !wrong.empty()) {
    return wrongUsage(wrong);
  }
  try {
    return cli::showInk(options);
  } catch (const std::bad_alloc&) {
    cli::reportError(options.file, cli::kNotEnoughMemory);
    return ExitStatus::failed;
  }
}

// How to write a file's name that looks like an option; empty where there is none.
std::string hintForDash(int count, char** words) {
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    std::error_code error;
    if (word.size() > 1 && word[0] == '-' && std::filesystem::exists(cli::pathOf(word), error)) {
      std::string hint = "'" + word;
      hint.append("' looks like an option; write ./").append(word).append(" for the file");
      return hint;
    }
  }
  return {};
}

// Whether everything that was printed, help included, could be written.
bool standardOutputIsWritten() {
  std::cout.flush();
  return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

ExitStatus run(int count, char** words) {
  CLI::App app("Opens the recordings of the Penwick digital pen as art with pen pressure.",
               "penwick");
  app.set_version_flag("--version", "penwick " PENWICK_VERSION);
  app.allow_windows_style_options(false);  // a word with a leading slash is a path, everywhere
  app.require_subcommand(1);
  app.failure_message([](const CLI::App* command, const CLI::Error& error) {
    std::string name = command->get_name();
    for (const CLI::App* subcommand : command->get_subcommands())
      name += " " + subcommand->get_name();
    return "penwick: " + cli::printable(error.what()) + " (see " + name + " --help)\n";
  });
  OpenWords openWords;
  InkWords inkWords;
  ConvertWords convertWords;
  const CLI::App* open = addOpen(app, openWords);
  addInk(app, inkWords);
  const CLI::App* convert = addConvert(app, convertWords);

  const auto isCommand = [&](const CLI::App* command) { return command->check_name(words[1]); };
  if (count > 1 && words[1][0] != '-' && app.get_subcommands(isCommand).empty()) {
    return wrongUsage(
        inQuotes(words[1]) +
        " is not a command; the commands are open, ink and convert (see penwick --help)");
  }
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& error) {
    if (const std::string hint = hintForDash(count, words); !hint.empty()) return wrongUsage(hint);
    return app.exit(error, std::cout, std::cerr) == 0 ? ExitStatus::done : ExitStatus::wrongUsage;
  }
  if (open->parsed()) return runOpen(*open, openWords);
  return convert->parsed() ? runConvert(convertWords) : runInk(inkWords);
}

}  // namespace

int main(int count, char** words) {
  if (!platform::openClosedStandardStreams()) return static_cast<int>(ExitStatus::failed);
  platform::reportFileSizeLimit();
  try {
    const std::shared_ptr<void> console = platform::utf8Console();
    platform::CommandLine line(count, words);
    const ExitStatus status = run(line.count(), line.words());
    if (standardOutputIsWritten()) return static_cast<int>(status);
    if (status != ExitStatus::done) return static_cast<int>(status);
    std::fputs("penwick: standard output could not be written; is its device full?\n", stderr);
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "penwick: %s\n", cli::kNotEnoughMemory);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "penwick: %s\n", cli::printable(error.what()).c_str());
  }
  return static_cast<int>(ExitStatus::failed);
}
