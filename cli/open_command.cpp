#include "cli/open_command.h"

#include <algorithm>
#include <cstdio>

#include "art/json.h"
#include "cli/batch.h"
#include "cli/module_place.h"
#include "cli/plugin_run.h"
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
      : options_(options), batch_(options.files, options.outputs, options.quiet) {
    run_.module = options.module.empty() ? findModule() : options.module;
    run_.builtInLibrary = options.builtInLibrary;
    run_.journal = options.journal.has_value();
  }

  bool openAll() {
    return batch_.run(
        [this](const fs::path& file, const fs::path& target) { return open(file, target); });
  }

 private:
  bool open(const fs::path& file, const fs::path& target) {
    if (const auto refusal = refusalOfJournal(file, target)) {
      return batch_.fail(*options_.journal, *refusal);
    }
    const PluginRun run = runPlugin(file, run_);
    if (options_.verbose) showPrinted(file, run.printed);
    if (options_.journal && !run.journal.empty() && !batch_.write(*options_.journal, run.journal)) {
      return false;
    }
    if (!run.document) return batch_.fail(file, explain(file, run));

    if (!run.notes.empty()) batch_.warn(file, run.notes);
    mentionOmissions(file);
    mentionHairlines(file, *run.document);
    const render::Picture picture = draw(*run.document, options_);
    if (picture.refusal) return batch_.fail(target, *picture.refusal);
    if (!batch_.write(target, picture.bytes)) return false;
    batch_.sayDone(file, target, summaryOf(*run.document));
    return true;
  }

  std::optional<std::string> refusalOfJournal(const fs::path& file, const fs::path& target) {
    if (!options_.journal) return {};
    if (isOneFile(*options_.journal, target)) return "is where the drawing goes; name another";
    return refusalToOverwrite(file, *options_.journal);
  }

  std::string explain(const fs::path& file, const PluginRun& run) {
    if (!run.readNothing) return run.notes.empty() ? run.refusal : run.refusal + "; " + run.notes;
    const Recording recording(file, kindByName(file));
    if (recording.complete()) return "the plug-in read it but drew nothing, and no call failed";
    return recording.explainFailure();
  }

  void mentionOmissions(const fs::path& file) {
    if (options_.quiet) return;
    const Recording recording(file, kindByName(file));
    std::string omissions = recording.explainOmissions();
    if (const std::string undrawn = recording.explainUndrawn(); !undrawn.empty()) {
      addPart(omissions, undrawn);
    }
    batch_.mention(file, omissions);
  }

  // Without pressure the brush draws in its thinnest size.
  void mentionHairlines(const fs::path& file, const art::Document& document) {
    const bool isPicture = options_.outputs.format != "json" && !options_.picture.centreLines;
    if (!isPicture || options_.picture.pressure || !render::lacksPressure(document)) return;
    batch_.mention(file,
                   "the recording has no pressure, so every line is as thin as the brush gets; "
                   "--pressure 0.5 draws them as if pressed halfway");
  }

  void showPrinted(const fs::path& file, const embedded::CapturedOutput& printed) {
    batch_.show(nativeName(file) + ": the plug-in printed\n" + printed.standardOutput +
                printed.standardError + (printed.empty() ? "" : "\n"));
  }

  const OpenOptions& options_;
  PluginRunOptions run_;
  Batch batch_;
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
