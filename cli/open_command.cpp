#include "cli/open_command.h"

#include <algorithm>
#include <cstdio>

#include "art/json.h"
#include "cli/module_place.h"
#include "cli/output_file.h"
#include "cli/plugin_run.h"
#include "cli/progress.h"
#include "cli/recording.h"
#include "cli/sentences.h"
#include "render/picture.h"
#include "render/spine.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

render::Picture draw(const art::Document& document, const OpenOptions& options) {
  const std::string& format = options.outputs.format;
  if (format == "json") return {art::toJson(document), {}};
  if (format == "pdf") return render::toPicture(document, render::Format::pdf, options.picture);
  if (format == "png") return render::toPicture(document, render::Format::png, options.picture);
  return render::toPicture(document, render::Format::svg, options.picture);
}

std::size_t countPoints(const std::vector<art::Object>& objects) {
  std::size_t count = 0;
  for (const art::Object& object : objects) {
    if (const auto* path = std::get_if<art::Path>(&object.value)) {
      count += path->segments.size();
    } else {
      count += countPoints(std::get<art::Group>(object.value).art);
    }
  }
  return count;
}

std::string summaryOf(const art::Document& document) {
  const std::size_t paths = art::countPaths(document);
  if (paths == 0) return "an empty drawing (the recording has no strokes to draw)";
  std::size_t points = 0;
  for (const art::Layer& layer : document.layers)
    points += countPoints(layer.art);
  char size[64];
  std::snprintf(size, sizeof size, "%.0f x %.0f mm", document.width * 25.4 / 72,
                document.height * 25.4 / 72);
  return counted(document.layers.size(), "layer") + ", " + counted(paths, "stroke") + ", " +
         counted(points, "point") + ", " + size;
}

class Opener {
 public:
  explicit Opener(const OpenOptions& options)
      : options_(options),
        outputs_(options.outputs),
        progress_(options.files.size(), options.quiet) {
    run_.module = options.module.empty() ? findModule() : options.module;
    run_.builtInLibrary = options.builtInLibrary;
    run_.journal = options.journal.has_value();
  }

  bool openAll() {
    if (const auto problem = outputs_.prepare()) return fail(options_.outputs.folder, *problem);
    bool allDone = true;
    for (std::size_t i = 0; i < options_.files.size(); ++i) {
      const fs::path& file = options_.files[i];
      progress_.begin(i, nativeName(file.filename()));
      if (!open(file)) allDone = false;
    }
    return allDone;
  }

 private:
  bool open(const fs::path& file) {
    const fs::path target = outputs_.targetFor(file);
    if (const auto refusal = outputs_.refusal(file, target)) return fail(target, *refusal);

    const PluginRun run = runPlugin(file, run_);
    if (options_.verbose) showPrinted(file, run.printed);
    if (options_.journal && !run.journal.empty() && !write(*options_.journal, run.journal)) {
      return false;
    }
    if (!run.document) return fail(file, explain(file, run));

    if (!run.notes.empty()) warn(file, run.notes);
    warnOfOmissions(file);
    warnOfHairlines(file, *run.document);
    const render::Picture picture = draw(*run.document, options_);
    if (picture.refusal) return fail(target, *picture.refusal);
    if (!write(target, picture.bytes)) return false;
    sayDone(file, target, *run.document);
    return true;
  }

  std::string explain(const fs::path& file, const PluginRun& run) {
    if (!run.readNothing) return run.notes.empty() ? run.refusal : run.refusal + "; " + run.notes;
    const Recording recording(file, kindByName(file));
    if (recording.complete()) return "the plug-in read it but drew nothing, and no call failed";
    return recording.explainFailure();
  }

  void warnOfOmissions(const fs::path& file) {
    if (options_.quiet) return;
    const Recording recording(file, kindByName(file));
    std::string omissions = recording.explainOmissions();
    if (const std::string undrawn = recording.explainUndrawn(); !undrawn.empty()) {
      addPart(omissions, undrawn);
    }
    if (!omissions.empty()) warn(file, omissions);
  }

  // Without pressure the brush draws in its thinnest size.
  void warnOfHairlines(const fs::path& file, const art::Document& document) {
    const bool isPicture = options_.outputs.format != "json" && !options_.picture.centreLines;
    if (options_.quiet || !isPicture || options_.picture.pressure) return;
    if (!render::lacksPressure(document)) return;
    warn(file,
         "the recording has no pressure, so every line is as thin as the brush gets; "
         "--pressure 0.5 draws them as if pressed halfway");
  }

  bool write(const fs::path& target, const std::string& bytes) {
    const auto problem = writeOutput(target, bytes);
    return !problem || fail(target, *problem);
  }

  bool fail(const fs::path& file, const std::string& sentence) {
    progress_.clear();
    reportError(file, sentence);
    return false;
  }

  void warn(const fs::path& file, const std::string& sentence) {
    progress_.clear();
    reportWarning(file, sentence);
  }

  // What was drawn goes to standard output, unless the drawing itself goes there.
  void sayDone(const fs::path& file, const fs::path& target, const art::Document& document) {
    if (options_.quiet) return;
    progress_.clear();
    const bool toStandardOutput = isStandardOutput(target);
    const std::string line = nativeName(file) + ": " + summaryOf(document) +
                             (toStandardOutput ? "" : " -> " + nativeName(target)) + "\n";
    std::fputs(line.c_str(), toStandardOutput ? stderr : stdout);
  }

  void showPrinted(const fs::path& file, const embedded::CapturedOutput& printed) {
    progress_.clear();
    std::fprintf(stderr, "%s: the plug-in printed\n%s%s", nativeName(file).c_str(),
                 printed.standardOutput.c_str(), printed.standardError.c_str());
    if (!printed.empty()) std::fputc('\n', stderr);
  }

  const OpenOptions& options_;
  PluginRunOptions run_;
  Outputs outputs_;
  Progress progress_;
};

}  // namespace

bool isFormat(std::string_view name) {
  return std::any_of(std::begin(kFormats), std::end(kFormats),
                     [name](std::string_view format) { return format == name; });
}

ExitStatus openFiles(const OpenOptions& options) {
  return Opener(options).openAll() ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace cli
