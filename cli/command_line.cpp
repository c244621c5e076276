#include "cli/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>

#include "cli/terminal_text.h"

namespace cli {

namespace {

// Refuses an empty name, such as that of a variable that is not set.
CLI::Validator notEmpty() {
  return CLI::Validator(
      [](const std::string& name) { return name.empty() ? "the name is empty" : ""; }, "");
}

constexpr char kRecordings[] =
    "pen recordings (.pnx, .eli) and ink documents (.kvo, .inkml), or folders of them; - is "
    "standard input";
constexpr char kRecordingsAlone[] =
    "pen recordings (.pnx, .eli) and ink documents (.kvo, .inkml); - is standard input";

CLI::Validator oneOf(std::vector<std::string> choices) {
  return CLI::Validator(
      [choices = std::move(choices)](const std::string& word) {
        if (std::ranges::find(choices, word) != choices.end()) return std::string();
        return inQuotes(word) + " is not one of " + CLI::detail::join(choices, ", ");
      },
      "");
}

template <class Number>
CLI::Validator numberFrom(Number least, Number most, const std::string& example) {
  return CLI::Validator(
      [=](const std::string& word) {
        Number value = 0;
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

void addQuiet(CLI::App& command, bool& quiet) {
  command.add_flag("-q,--quiet", quiet, "print only errors and what the plug-in did wrong");
}

void addFiles(CLI::App& command, std::vector<std::string>& files, const char* kinds = kRecordings) {
  command.add_option("FILE", files, kinds)->required()->check(notEmpty())->type_name("");
}

void addFile(CLI::App& command, std::string& file) {
  command
      .add_option(
          "FILE", file,
          "a pen recording (.pnx, .eli) or ink document (.kvo, .inkml); - is standard input")
      ->required()
      ->check(notEmpty())
      ->type_name("");
}

void addJobs(CLI::App& command, InputWords& words) {
  command
      .add_option("-j,--jobs", words.jobs,
                  "how many files to work on at a time; by default one for each processor")
      ->check(numberFrom(1, 1000, "4"))
      ->type_name("N");
  command
      .add_option("--time-limit", words.timeLimit,
                  "processor time for each file in seconds; by default 60 where there are several")
      ->check(numberFrom(0.1, 1e6, "60"))
      ->type_name("S");
}

void addOutputs(CLI::App& command, OutputWords& words, const char* result) {
  addFiles(command, words.files);
  command.add_option("-o,--output", words.output, std::string(result) + "; - is standard output")
      ->check(notEmpty())
      ->type_name("OUT");
  command
      .add_option("--out-dir", words.folder,
                  "folder for the results, each named after its FILE; created if missing")
      ->check(notEmpty())
      ->type_name("DIR");
  command
      .add_option("--on-conflict", words.onConflict,
                  "keep: keep results that already exist (default); replace: overwrite them, even "
                  "recordings; number: give the new ones a number")
      ->check(oneOf({"keep", "replace", "number"}))
      ->type_name("RULE");
  command.add_flag("--force", words.force, "the same as --on-conflict replace");
  addJobs(command, words);
  addQuiet(command, words.quiet);
}

void addMending(CLI::App& command, bool& rescue) {
  command.add_flag("--rescue", rescue, "read what can be saved of a damaged FILE");
}

void addKind(CLI::App& command, std::string& kind) {
  command
      .add_option(
          "--as", kind,
          "read FILE as pen or inkml, whatever its name and contents; inkml-subset: only as "
          "the plug-in reads it")
      ->check(oneOf({"pen", "inkml", "inkml-subset"}))
      ->type_name("KIND");
}

void addTranslating(CLI::App& command, InputWords& words) {
  addKind(command, words.kind);
  command.add_flag("--translate", words.translate,
                   "translate ink documents even where the plug-in could read them");
  command
      .add_option("--unit", words.unit,
                  "length of a unit in millimetres where an ink document of another program does "
                  "not say it; by default its drawing becomes 150 mm long")
      ->check(numberFrom(1e-6, 1e6, "0.1"))
      ->type_name("MM");
}

void addPressure(CLI::App& command, std::optional<double>& pressure) {
  command
      .add_option("--pressure", pressure,
                  "0 to 1: the pressure with which to draw recordings that have none")
      ->check(numberFrom(0.0, 1.0, "0.5"))
      ->type_name("P");
}

void addPicture(CLI::App& open, OpenWords& words) {
  open.add_option("--format", words.format,
                  "svg, pdf, png, html or json; by default the ending of OUT, or svg")
      ->type_name("F");
  open.add_option("--style", words.style,
                  "outline: the strokes as the brush draws them (default); "
                  "centerline: plain open lines")
      ->check(oneOf({"outline", "centerline"}))
      ->type_name("S");
  addPressure(open, words.pressure);
  open.add_option("--background", words.background,
                  "white, black, #rgb or #rrggbb; transparent by default")
      ->type_name("COLOUR");
  open.add_option("--dpi", words.dpi, "pixels per inch of a PNG; 150 by default")
      ->check(numberFrom(1.0, 1e6, "300"))
      ->type_name("N");
  open.add_option("--size", words.size,
                  "largest size of a PNG in pixels, or W for the width only; use this or --dpi")
      ->type_name("WxH");
}

void addOpen(CLI::App& open, OpenWords& words) {
  addOutputs(open, words, "where the drawing of one FILE goes (.svg, .pdf, .png, .html, .json)");
  addPicture(open, words);
  open.add_option("--journal", words.journal,
                  "write every call that the plug-in makes to the host, one line of JSON each")
      ->check(notEmpty())
      ->type_name("CALLS.jsonl");
  open.add_flag("--no-built-in-library", words.noLibrary,
                "use the brush style library in your folder only, not the built-in one");
  open.add_option("--module", words.module, "use this plug-in module instead of the bundled one")
      ->type_name("FILE.aip");
  open.add_option("--log-dir", words.logFolder,
                  "folder for the plug-in's log, created if missing; by default your own state "
                  "folder")
      ->check(notEmpty())
      ->type_name("DIR");
  addTranslating(open, words);
  addMending(open, words.rescue);
  open.add_flag("-v,--verbose", words.verbose,
                "show what the plug-in printed, and how many unknown packets it skipped");
}

void addInk(CLI::App& ink, InkWords& words) {
  addFile(ink, words.file);
  ink.add_option("-o,--output", words.output, "where the JSON goes; - is standard output")
      ->check(notEmpty())
      ->type_name("OUT.json");
  ink.add_flag("--force", words.force, "overwrite a recording that already exists");
  addKind(ink, words.kind);
  addMending(ink, words.rescue);
  addQuiet(ink, words.quiet);
}

void addConvert(CLI::App& convert, ConvertWords& words) {
  addOutputs(convert, words, "where the ink document of one FILE goes (.kvo, .inkml)");
  addTranslating(convert, words);
  addMending(convert, words.rescue);
  convert.add_flag("--exact", words.exact,
                   "keep the tenths of coordinates, for other programs; the plug-in cuts them off");
}

void addRescue(CLI::App& rescue, RescueWords& words) {
  addOutputs(rescue, words, "where the mended recording of one FILE goes, of the same kind");
  addKind(rescue, words.kind);
  rescue.add_flag("--json", words.json,
                  "print a line of JSON for each FILE, with every stretch that was left out");
  rescue.add_flag(
      "--thorough", words.thorough,
      "mend sound recordings, too, where they look damaged; this may leave out what was "
      "drawn");
}

void addInfo(CLI::App& info, InfoWords& words) {
  addFiles(info, words.files);
  addJobs(info, words);
  info.add_flag("--json", words.json, "print a line of JSON for each FILE instead of a table");
  addTranslating(info, words);
}

void addCheck(CLI::App& check, CheckWords& words) {
  addFiles(check, words.files);
  addJobs(check, words);
  addTranslating(check, words);
  check.add_flag("-q,--quiet", words.quiet,
                 "leave out the files about which there is nothing to say");
}

void addPackets(CLI::App& packets, PacketsWords& words) {
  addFile(packets, words.file);
  packets.add_flag("--json", words.json, "print a line of JSON for each packet or element");
  addKind(packets, words.kind);
}

void addSheet(CLI::App& sheet, SheetWords& words) {
  addFiles(sheet, words.files);
  sheet
      .add_option("-o,--output", words.output,
                  "where the sheet goes (.html, .pdf); - is standard output, which gets HTML")
      ->required()
      ->check(notEmpty())
      ->type_name("OUT");
  sheet.add_option("--title", words.title, "what the sheet is headed with; by default Recordings")
      ->type_name("TITLE");
  sheet.add_flag("--force", words.force, "overwrite a recording that already exists");
  addJobs(sheet, words);
  addTranslating(sheet, words);
  addQuiet(sheet, words.quiet);
}

void addView(CLI::App& view, ViewWords& words) {
  addFiles(view, words.files, kRecordingsAlone);
  addPressure(view, words.pressure);
  view.add_flag("--messages-in-pages", words.messagesInPages,
                "show warnings and errors as pages, too, for those who see no terminal");
  addJobs(view, words);
  addTranslating(view, words);
  addMending(view, words.rescue);
  addQuiet(view, words.quiet);
}

/// Adds a command with the options that `addOptions` declares. Its words become `chosen` where it
/// is the one that is asked for.
template <class Words>
void addCommand(CLI::App& app, CommandWords& chosen, const char* name, const char* purpose,
                void (*addOptions)(CLI::App&, Words&)) {
  const auto words = std::make_shared<Words>();
  CLI::App* command = app.add_subcommand(name, purpose);
  addOptions(*command, *words);
  command->callback([words, &chosen] { chosen = *words; });
}

void addCommands(CLI::App& app, CommandWords& chosen) {
  addCommand(app, chosen, "open", "open recordings through the plug-in and draw them", addOpen);
  addCommand(app, chosen, "ink", "show the ink document of a recording as JSON", addInk);
  addCommand(app, chosen, "convert", "write recordings as ink documents (InkML)", addConvert);
  addCommand(app, chosen, "info", "tell what is in recordings", addInfo);
  addCommand(app, chosen, "check", "say whether recordings are sound, and what is wrong", addCheck);
  addCommand(app, chosen, "packets", "list the packets of a recording", addPackets);
  addCommand(app, chosen, "rescue", "mend damaged recordings", addRescue);
  addCommand(app, chosen, "view", "show drawings in the browser, and how they came about", addView);
  addCommand(app, chosen, "sheet", "make a contact sheet of many drawings", addSheet);
}

void describe(CLI::App& app) {
  app.set_version_flag("--version", "penwick " PENWICK_VERSION);
  app.allow_windows_style_options(false);  // a word with a leading slash is a path, everywhere
  app.require_subcommand(1);
  app.failure_message([](const CLI::App* command, const CLI::Error& error) {
    std::string name = command->get_name();
    for (const CLI::App* subcommand : command->get_subcommands())
      name += " " + subcommand->get_name();
    return "penwick: " + printable(error.what()) + " (see " + name + " --help)\n";
  });
}

/// "open, ink, convert and rescue".
std::string listCommands(const CLI::App& app) {
  const std::vector<const CLI::App*> commands = app.get_subcommands([](auto*) { return true; });
  std::string list;
  for (const CLI::App* command : commands) {
    if (!list.empty()) list += command == commands.back() ? " and " : ", ";
    list += command->get_name();
  }
  return list;
}

/// What is wrong with a first word that is no command, or nothing.
std::string wrongCommand(const CLI::App& app, const std::string& word) {
  const auto isNamed = [&word](const CLI::App* command) { return command->check_name(word); };
  if (word.starts_with('-') || !app.get_subcommands(isNamed).empty()) return {};
  return inQuotes(word) + " is not a command; the commands are " + listCommands(app) +
         " (see penwick --help)";
}

/// How to write a file's name that looks like an option; empty where there is none.
std::string hintForDash(int count, char** words) {
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    std::error_code error;
    if (word.size() > 1 && word[0] == '-' && std::filesystem::exists(pathOf(word), error)) {
      return inQuotes(word) + " looks like an option; write ./" + word + " for the file";
    }
  }
  return {};
}

}  // namespace

std::variant<CommandWords, ExitStatus> parseCommandLine(int count, char** words) {
  CLI::App app("Opens the recordings of the Penwick digital pen as art with pen pressure.",
               "penwick");
  CommandWords chosen;
  describe(app);
  addCommands(app, chosen);
  if (count > 1) {
    if (const std::string wrong = wrongCommand(app, words[1]); !wrong.empty()) {
      return wrongUsage(wrong);
    }
  }
  try {
    app.parse(count, words);
  } catch (const CLI::ParseError& error) {
    if (const std::string hint = hintForDash(count, words); !hint.empty()) return wrongUsage(hint);
    return app.exit(error, std::cout, std::cerr) == 0 ? ExitStatus::done : ExitStatus::wrongUsage;
  }
  return chosen;
}

}  // namespace cli
