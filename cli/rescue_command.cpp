#include "cli/rescue_command.h"

#include "cli/batch.h"
#include "cli/module_place.h"
#include "cli/output_file.h"
#include "cli/plugin_run.h"
#include "cli/private_copy.h"
#include "cli/rescue_json.h"
#include "cli/rescuing.h"
#include "cli/sentences.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

class Rescuer {
 public:
  explicit Rescuer(const RescueOptions& options)
      : options_(options), batch_(options, options.json ? "" : "done") {
    run_.module = findModule();
  }

  bool rescueAll() {
    return batch_.run(
        [this](const fs::path& file, const fs::path& target) { return rescue(file, target); });
  }

 private:
  bool rescue(const fs::path& file, const fs::path& target) {
    const rescue::Mend mend = options_.thorough ? rescue::Mend::doubtful : rescue::Mend::damaged;
    const Rescued rescued = rescueRecording(file, kindByName(file), mend);
    const bool isWritten = rescued.saved && (!rescued.sound || isPlaceNamed());
    const bool isDone = rescued.saved ? !isWritten || place(file, rescued, target)
                                      : batch_.fail(file, rescued.problem);
    const fs::path output = isDone && isWritten ? target : fs::path();
    if (options_.json) {
      batch_.sayLine(rescueToJson(rescued, nativeName(batch_.nameOf(file)), nativeName(output)));
    } else if (isDone) {
      batch_.sayDone(file, output, summaryOf(rescued));
    }
    return isDone;
  }

  bool place(const fs::path& file, const Rescued& rescued, const fs::path& target) {
    // A result that is named after its file has the ending by which that was read.
    const bool isNamed = options_.outputs.output && !isStandardOutput(target);
    if (isNamed && kindByName(target) != rescued.kind) {
      return batch_.fail(target, rescued.kind == FileKind::pen
                                     ? "by this name a pen recording would be taken for an ink "
                                       "document; choose one that ends in .pnx"
                                     : "by this name an ink document would be taken for a pen "
                                       "recording; choose one that ends in .kvo");
    }
    if (!rescued.sound && !opens(file, rescued)) return false;
    return batch_.write(target, rescued.bytes);
  }

  /// Whether what could be saved opens. Where the plug-in only fails to draw it, as it does with
  /// strokes of very many points, the points are still worth keeping.
  bool opens(const fs::path& file, const Rescued& rescued) {
    const PrivateCopy copy(rescued.bytes, rescued.kind);
    if (copy.path().empty()) return batch_.fail(file, kNoSpaceForCopy);
    const Recording recording(copy.path(), rescued.kind);
    if (!recording.complete()) {
      return batch_.fail(file, "what could be saved does not open: " + recording.explainFailure());
    }
    const PluginRun run = runPlugin(copy.path(), run_);
    if (run.readNothing) return batch_.fail(file, "the plug-in does not open what could be saved");
    if (!run.document) {
      batch_.warn(file, "the plug-in does not draw what could be saved: " + run.refusal);
    } else if (recording.looksDamaged()) {
      batch_.mention(file, "what could be saved: " + recording.explainOmissions());
    }
    return true;
  }

  bool isPlaceNamed() const { return options_.outputs.output || !options_.outputs.folder.empty(); }

  std::string summaryOf(const Rescued& rescued) const {
    if (!rescued.sound) return describe(rescued);
    const std::string sentence = "sound, " + counted(rescued.pointsKept, "point");
    return isPlaceNamed() ? sentence + ", copied unchanged" : sentence + ", nothing to mend";
  }

  const RescueOptions& options_;
  PluginRunOptions run_;
  Batch batch_;
};

}  // namespace

ExitStatus rescueFiles(const RescueOptions& options) {
  return Rescuer(options).rescueAll() ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace cli
