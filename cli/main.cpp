// The command line of penwick.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iostream>
#include <memory>

#include "cli/convert_command.h"
#include "cli/ink_command.h"
#include "cli/open_command.h"
#include "cli/picture_words.h"
#include "platform/command_line.h"

namespace {

using cli::ExitStatus;

// The words of the command line before they mean anything.
struct OutputWords {
  std::vector<std::string> files;
  std::string output;
  std::string folder;
  bool force = false;
  bool quiet = false;
};

struct OpenWords : OutputWords {
  std::string format;
  std::string journal;
  std::string module;
  std::string style = "outline";
  std::string background;
  std::string size;
  std::optional<double> pressure;
  double dpi = render::Options().dpi;
  bool verbose = false;
  bool noLibrary = false;
};

struct ConvertWords : OutputWords {
  std::string kind;
};

struct InkWords {
  std::string file;
  std::string output = "-";
  std::string kind;
  bool quiet = false;
};

std::string formatList() {
  std::string list;
  for (const char* format : cli::kFormats)
    list += (list.empty() ? "" : ", ") + std::string(format);
  return list;
}

// A name that came out empty, as from a variable that is not set.
const CLI::Validator kNotEmpty(
    [](const std::string& name) { return name.empty() ? "the name is empty" : ""; }, "");

constexpr char kRecordings[] = "pen recordings (.pnx, .eli) and ink documents (.kvo, .inkml)";

void addQuiet(CLI::App* command, bool& quiet) {
  command->add_flag("-q,--quiet", quiet, "say nothing but errors and what the plug-in did wrong");
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
                   "folder for results named after their FILE; made where it is missing")
      ->check(kNotEmpty)
      ->type_name("DIR");
  command->add_flag("--force", words.force, "replace results that are there already");
  addQuiet(command, words.quiet);
}

void addKind(CLI::App* command, std::string& kind) {
  command->add_option("--as", kind, "read it as pen or inkml, whatever its name")
      ->check(CLI::IsMember({"pen", "inkml"}))
      ->type_name("KIND");
}

CLI::App* addOpen(CLI::App& app, OpenWords& words) {
  CLI::App* open = app.add_subcommand("open", "open recordings through the plug-in and draw them");
  addOutputs(open, words, "where the drawing of one FILE goes (.svg, .pdf, .png, .json)");
  open->add_option("--format", words.format,
                   "svg, pdf, png or json; by the ending of OUT, or else svg")
      ->type_name("F");
  open->add_option("--style", words.style,
                   "outline: the strokes as the brush draws them (default); "
                   "centerline: plain open lines")
      ->check(CLI::IsMember({"outline", "centerline"}))
      ->type_name("S");
  open->add_option("--pressure", words.pressure,
                   "0 to 1: draw recordings without pressure as if pressed so")
      ->check(CLI::Range(0.0, 1.0))
      ->type_name("P");
  open->add_option("--background", words.background,
                   "white, black, #rgb or #rrggbb; transparent without it")
      ->type_name("COLOUR");
  open->add_option("--dpi", words.dpi, "pixels an inch of a PNG, 150 without it")
      ->check(CLI::Range(1.0, 1e6))
      ->type_name("N");
  open->add_option("--size", words.size,
                   "largest size of a PNG in pixels, or W for the width alone; used "
                   "in place of --dpi")
      ->type_name("WxH");
  open->add_option("--journal", words.journal,
                   "write every call that the plug-in made on the host, one line of JSON each")
      ->check(kNotEmpty)
      ->type_name("CALLS.jsonl");
  open->add_flag("--no-built-in-library", words.noLibrary,
                 "use the brush style library in your folder only, not the built-in one");
  open->add_option("--module", words.module, "run this plug-in module in place of the own one")
      ->type_name("FILE.aip");
  open->add_flag("-v,--verbose", words.verbose, "show what the plug-in printed");
  return open;
}

CLI::App* addConvert(CLI::App& app, ConvertWords& words) {
  CLI::App* convert = app.add_subcommand("convert", "write recordings as ink documents (InkML)");
  addOutputs(convert, words, "where the ink document of one FILE goes (.kvo, .inkml)");
  addKind(convert, words.kind);
  return convert;
}

CLI::App* addInk(CLI::App& app, InkWords& words) {
  CLI::App* ink = app.add_subcommand("ink", "show the ink document of a recording as JSON");
  ink->add_option("FILE", words.file, "a pen recording (.pnx, .eli) or ink document (.kvo, .inkml)")
      ->required()
      ->check(kNotEmpty)
      ->type_name("");
  ink->add_option("-o,--output", words.output, "where the JSON goes; - is standard output")
      ->check(kNotEmpty)
      ->type_name("OUT.json");
  addKind(ink, words.kind);
  addQuiet(ink, words.quiet);
  return ink;
}

ExitStatus wrongUsage(const std::string& sentence) {
  std::fprintf(stderr, "penwick: %s\n", sentence.c_str());
  return ExitStatus::wrongUsage;
}

// The ending of a name without its dot.
std::string ending(const std::filesystem::path& path) {
  const std::string extension = cli::nativeName(path.extension());
  return extension.empty() ? extension : extension.substr(1);
}

std::string inSmallLetters(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char letter) {
    return static_cast<char>(std::tolower(letter));
  });
  return text;
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

/// What is wrong with where results are to go, or nothing.
std::string wrongOutputs(const OutputWords& words) {
  if (words.output.empty()) return {};
  if (words.files.size() > 1) return "-o takes one FILE; use --out-dir for several";
  return words.folder.empty() ? "" : "give -o or --out-dir, not both";
}

/// The format that is asked for: by its own option, by the ending of the output, or the usual one.
std::string formatOf(const std::string& asked, const OutputWords& words, const char* usual) {
  if (!asked.empty()) return asked;
  return words.output.empty() || words.output == "-" ? usual : ending(cli::pathOf(words.output));
}

/// What is wrong with the format that was found, or nothing.
std::string wrongFormat(const OpenWords& words, const std::string& format) {
  if (format.empty()) {
    return "'" + words.output +
           "' has no ending that tells its format; add one or give --format (" + formatList() + ")";
  }
  if (!cli::isFormat(format)) {
    return "'" + format + "' is no format that can be written; there are " + formatList();
  }
  const std::string named = inSmallLetters(ending(cli::pathOf(words.output)));
  if (format == named || !cli::isFormat(named)) return {};
  return "'" + words.output + "' is no name for --format " + format + "; leave one of them out";
}

ExitStatus runOpen(const OpenWords& words) {
  cli::OpenOptions options;
  options.files = pathsOf(words.files);
  options.outputs = planOf(words);
  options.outputs.format = inSmallLetters(formatOf(words.format, words, "svg"));
  if (!words.journal.empty()) options.journal = cli::pathOf(words.journal);
  options.module = cli::pathOf(words.module);
  options.quiet = words.quiet;
  options.verbose = words.verbose;
  options.builtInLibrary = !words.noLibrary;
  options.picture.pressure = words.pressure;
  options.picture.centreLines = words.style == "centerline";
  options.picture.dpi = words.dpi;

  if (const std::string wrong = wrongOutputs(words); !wrong.empty()) return wrongUsage(wrong);
  if (options.journal && options.files.size() > 1) return wrongUsage("--journal takes one FILE");
  if (const std::string wrong = wrongFormat(words, options.outputs.format); !wrong.empty()) {
    return wrongUsage(wrong);
  }
  if (!words.background.empty()) {
    options.picture.background = cli::parseColor(words.background);
    if (!options.picture.background) {
      return wrongUsage("'" + words.background +
                        "' is no colour; write white, black, #rgb or #rrggbb");
    }
  }
  if (!words.size.empty()) {
    options.picture.size = cli::parseSize(words.size);
    if (!options.picture.size) {
      return wrongUsage("'" + words.size +
                        "' is no size; write 800x600, or 800 for the width alone");
    }
  }
  return cli::openFiles(options);
}

ExitStatus runConvert(const ConvertWords& words) {
  cli::ConvertOptions options;
  options.files = pathsOf(words.files);
  options.outputs = planOf(words);
  options.outputs.format = formatOf("", words, "kvo");
  options.kind = kindOf(words.kind);
  options.quiet = words.quiet;
  if (const std::string wrong = wrongOutputs(words); !wrong.empty()) return wrongUsage(wrong);
  // In small letters only: by any other name the document would be taken for a pen recording.
  if (options.outputs.format != "kvo" && options.outputs.format != "inkml") {
    return wrongUsage("an ink document ends in .kvo or .inkml, not in '" + options.outputs.format +
                      "'");
  }
  return cli::convertFiles(options);
}

ExitStatus runInk(const InkWords& words) {
  cli::InkOptions options;
  options.file = cli::pathOf(words.file);
  options.output = cli::pathOf(words.output);
  options.kind = kindOf(words.kind);
  options.quiet = words.quiet;
  return cli::showInk(options);
}

// What to write in place of a file's name that looks like an option; nothing where there is none.
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

// Whether all that was printed came out, help included.
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
    return "penwick: " + std::string(error.what()) + " (" + name + " --help tells more)\n";
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
        "'" + std::string(words[1]) +
        "' is no command; there are open, ink and convert (penwick --help tells more)");
  }
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& error) {
    if (const std::string hint = hintForDash(count, words); !hint.empty()) return wrongUsage(hint);
    return app.exit(error, std::cout, std::cerr) == 0 ? ExitStatus::done : ExitStatus::wrongUsage;
  }
  if (open->parsed()) return runOpen(openWords);
  return convert->parsed() ? runConvert(convertWords) : runInk(inkWords);
}

}  // namespace

int main(int count, char** words) {
  try {
    const std::shared_ptr<void> console = platform::utf8Console();
    platform::CommandLine line(count, words);
    const ExitStatus status = run(line.count(), line.words());
    if (standardOutputIsWritten()) return static_cast<int>(status);
    if (status != ExitStatus::done) return static_cast<int>(status);
    std::fputs("penwick: standard output could not be written; is its device full?\n", stderr);
  } catch (const std::bad_alloc&) {
    std::fputs("penwick: there is not enough memory\n", stderr);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "penwick: %s\n", error.what());
  }
  return static_cast<int>(ExitStatus::failed);
}
