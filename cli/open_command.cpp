#include "cli/open_command.h"

#include <stdexcept>

#include "art/json.h"
#include "cli/batch.h"
#include "cli/input_file.h"
#include "cli/log_folder.h"
#include "cli/module_place.h"
#include "cli/output_file.h"
#include "cli/page_folder.h"
#include "cli/plugin_run.h"
#include "cli/prepared_input.h"
#include "cli/recording.h"
#include "cli/rescuing.h"
#include "cli/sentences.h"
#include "cli/stroke_times.h"
#include "cli/unopened.h"
#include "render/pdf_and_png.h"
#include "render/spine.h"
#include "render/svg.h"
#include "text/format.h"
#include "web/page.h"
#include "web/replay_page.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

render::Picture draw(const art::Document& document, const OpenOptions& options,
                     const web::ReplayFacts& facts) {
  switch (options.format) {
    case OutputFormat::svg:
      return {render::toSvg(document, options.picture), {}};
    case OutputFormat::pdf:
      return render::toPdf(document, options.picture);
    case OutputFormat::png:
      return render::toPng(document, options.picture);
    case OutputFormat::html:
      return {web::replayPage(document, options.picture, facts), {}};
    case OutputFormat::json:
      return {art::toJson(document), {}};
  }
  throw std::logic_error("an output format that nothing writes");
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
  std::size_t points = 0;
  for (const art::Layer& layer : document.layers)
    points += countPoints(layer.art);
  return counted(document.layers.size(), "layer") + ", " +
         counted(art::countPaths(document), "stroke") + ", " + counted(points, "point") + ", " +
         text::format("%.0f x %.0f mm", document.width * 25.4 / 72, document.height * 25.4 / 72);
}

class Opener {
 public:
  explicit Opener(const OpenOptions& options, fs::path pages = {})
      : options_(options), pages_(std::move(pages)), batch_(options, "drawn") {
    run_.module = options.module.empty() ? findModule() : options.module;
    run_.builtInLibrary = options.builtInLibrary;
    run_.journal = options.journal.has_value();
  }

  bool openAll() {
    if (options_.logFolder) {
      if (const auto refusal = prepareLogFolder(*options_.logFolder)) {
        return batch_.fail(*options_.logFolder, *refusal);
      }
    }
    run_.logFolder = options_.logFolder ? *options_.logFolder : makeOwnLogFolder();
    return batch_.run([this](const fs::path& file, const fs::path& target) {
      return open(file, pages_.empty() ? target : pages_ / pageName(batch_.nameOf(file)));
    });
  }

  /// The pages that were made, after that.
  std::vector<fs::path> pages() const {
    std::vector<fs::path> all;
    for (std::size_t i = 0; i < batch_.reports().size(); ++i) {
      const FileReport& report = batch_.reports()[i];
      if (!report.product.empty()) {
        all.push_back(pathOf(report.product));
      } else if (options_.messagesInPages) {
        const fs::path& file = batch_.inputs()[i].file;
        const fs::path page = pages_ / pageName(file);
        const std::string text = web::messagePage(nativeName(file.filename()), remarksOf(report));
        if (!writeOutput(page, text)) all.push_back(page);
      }
    }
    return all;
  }

 private:
  bool open(const fs::path& file, const fs::path& target) {
    if (const auto refusal = refusalOfJournal(file, target)) {
      return batch_.fail(*options_.journal, *refusal);
    }
    const PreparedInput input(file, options_.ink, options_.rescue);
    if (input.problem()) return batch_.fail(file, *input.problem());
    const PluginRun run = runPlugin(input.path(), run_);
    if (options_.verbose) showPrinted(file, run.printed);
    if (options_.journal && !run.journal.empty() && !batch_.write(*options_.journal, run.journal)) {
      return false;
    }
    if (!run.document) return batch_.fail(file, explainUnopened(run, input.path()));

    if (input.translation()) batch_.mentionAll(file, input.translation()->remarks);
    if (!run.notes.empty()) batch_.warn(file, run.notes);
    const std::optional<Recording> recording = readAgain(input);
    const std::string summary =
        options_.quiet ? "" : explainDrawing(file, input, *recording, *run.document);
    const render::Picture picture =
        draw(*run.document, options_, replayFactsOf(file, input, recording));
    if (picture.refusal) return batch_.fail(target, *picture.refusal);
    if (!batch_.write(target, picture.bytes)) return false;
    batch_.sayDone(file, target, summary);
    batch_.give(nativeName(target));
    return true;
  }

  /// The recording is read a second time to find out what was left out, and when it was drawn,
  /// unless nobody is to know.
  std::optional<Recording> readAgain(const PreparedInput& input) const {
    if (options_.quiet && options_.format != OutputFormat::html) return {};
    return std::optional<Recording>(std::in_place, input.path(), kindByName(input.path()));
  }

  web::ReplayFacts replayFactsOf(const fs::path& file, const PreparedInput& input,
                                 const std::optional<Recording>& recording) const {
    if (options_.format != OutputFormat::html) return {};
    const fs::path& name = batch_.nameOf(file);
    return {isStandardInput(name) ? "drawing" : nativeName(name.filename()),
            strokeTimes(*recording, input.path()), recording->kind() == FileKind::inkml,
            options_.messagesInPages ? batch_.remarks() : std::vector<std::string>()};
  }

  std::optional<std::string> refusalOfJournal(const fs::path& file, const fs::path& target) {
    if (!options_.journal) return {};
    if (isOneFile(*options_.journal, target))
      return "is also where the drawing goes; choose another file";
    const bool force = options_.outputs.onConflict == OnConflict::replace;
    return refusalToOverwrite(file, *options_.journal, force);
  }

  /// Prints what a person should know about the drawing; gives a summary.
  std::string explainDrawing(const fs::path& file, const PreparedInput& input,
                             const Recording& recording, const art::Document& document) {
    mentionOmissions(file, input, recording);
    mentionHairlines(file, document);
    return joined(drawingOf(recording, document), input.summary());
  }

  static std::string drawingOf(const Recording& recording, const art::Document& document) {
    if (art::countPaths(document) > 0) return summaryOf(document);
    return recording.hasStrokes() ? "an empty drawing (none of the strokes could be drawn)"
                                  : "an empty drawing (the recording has no strokes to draw)";
  }

  void mentionOmissions(const fs::path& file, const PreparedInput& input,
                        const Recording& recording) {
    std::string omissions = omissionsOf(recording, input.path());
    if (const std::string undrawn = recording.explainUndrawn(); !undrawn.empty()) {
      addPart(omissions, undrawn);
    }
    batch_.mention(file, omissions);
    const std::string unknown = recording.explainUnknown();
    if (options_.verbose && !unknown.empty()) batch_.note(file, unknown);
  }

  // Without pressure the brush draws at its smallest size.
  void mentionHairlines(const fs::path& file, const art::Document& document) {
    const bool isPicture = options_.format != OutputFormat::json && !options_.picture.centreLines;
    if (!isPicture || options_.picture.pressure || !render::lacksPressure(document)) return;
    batch_.mention(file,
                   "the recording has no pressure, so every line is as thin as the brush gets; "
                   "--pressure 0.5 draws them as if pressed halfway");
  }

  void showPrinted(const fs::path& file, const embedded::CapturedOutput& printed) {
    batch_.show(file, "the plug-in printed",
                printed.standardOutput + printed.standardError + (printed.empty() ? "" : "\n"));
  }

  const OpenOptions& options_;
  fs::path pages_;  ///< Empty: the results go where the batch has them.
  PluginRunOptions run_;
  Batch batch_;
};

}  // namespace

ExitStatus openFiles(const OpenOptions& options) {
  return Opener(options).openAll() ? ExitStatus::done : ExitStatus::failed;
}

ExitStatus openAsPages(const OpenOptions& options, const fs::path& folder,
                       std::vector<fs::path>& pages) {
  Opener opener(options, folder);
  const bool allDone = opener.openAll();
  pages = opener.pages();
  return allDone ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace cli
