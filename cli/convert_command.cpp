#include "cli/convert_command.h"

#include <cstdio>

#include "cli/output_file.h"
#include "cli/progress.h"
#include "cli/sentences.h"
#include "cli/temporary_file.h"
#include "inkml/document_serializer.h"
#include "platform/paths.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

constexpr char kDefaultContext[] = "default-context";

Orvo::Channel channel(const char* name, const char* units, std::int32_t least, std::int32_t most) {
  Orvo::Channel made;
  made.name.value = name;
  made.units.value = units;
  made.min.value = least;
  made.max.value = most;
  return made;
}

/// What every written trace refers to, unless it is there: seven channels in the order of a point,
/// and a plain brush.
void declareDefaultContext(Orvo::InkMLDefinitions& definitions) {
  for (const Orvo::InkContext& context : definitions.contexts) {
    if (context.id == kDefaultContext) return;
  }
  constexpr std::int32_t kMost = 2147483647;
  Orvo::TraceFormat& format = definitions.traceFormats.emplace_back();
  format.id = "default-format";
  for (const char* axis : {"X", "Y", "Z"})
    format.push_back(channel(axis, "0.1mm", -kMost, kMost));
  format.push_back(channel("F", "dev", 0, kMost));
  for (const char* tilt : {"TX", "TY"})
    format.push_back(channel(tilt, "dev", -128, 127));
  format.push_back(channel("T", "dev", 0, kMost));
  Orvo::Brush& brush = definitions.brushes.emplace_back();
  brush.id = "default-brush";
  // In front: a reader drops what follows a context that it cannot read.
  Orvo::InkContext& context = definitions.contexts.emplace_front();
  context.id = kDefaultContext;
  context.brush.value = &brush;
  context.traceFormat.value = &format;
}

class Converter {
 public:
  explicit Converter(const ConvertOptions& options)
      : options_(options),
        outputs_(options.outputs),
        progress_(options.files.size(), options.quiet) {}

  bool convertAll() {
    if (const auto problem = outputs_.prepare()) return fail(options_.outputs.folder, *problem);
    bool allDone = true;
    for (std::size_t i = 0; i < options_.files.size(); ++i) {
      progress_.begin(i, nativeName(options_.files[i].filename()));
      if (!convert(options_.files[i])) allDone = false;
    }
    return allDone;
  }

 private:
  bool convert(const fs::path& file) {
    const fs::path target = outputs_.targetFor(file);
    if (const auto refusal = outputs_.refusal(file, target)) return fail(target, *refusal);
    const Recording recording(file, options_.kind.value_or(kindByName(file)));
    if (!recording.complete()) return fail(file, recording.explainFailure());
    const std::optional<std::string> text = inkmlOf(recording);
    if (!text) return fail(target, "cannot be written: there is no room for a temporary file");
    warnOfOmissions(file, recording.explainOmissions());
    if (const auto problem = writeOutput(target, *text)) return fail(target, *problem);
    say(file, target, recording.document());
    return true;
  }

  // The serializer writes to a file by its name.
  static std::optional<std::string> inkmlOf(const Recording& recording) {
    Orvo::InkMLDefinitions none;
    Orvo::InkMLDefinitions* own = recording.definitions();
    Orvo::InkMLDefinitions& definitions = own == nullptr ? none : *own;
    declareDefaultContext(definitions);
    const TemporaryFile file;
    Orvo::DocumentSerializer serializer(&recording.document());
    const std::wstring name = platform::nativePathToWide(nativeName(file.path()));
    if (!serializer.write(name.c_str(), definitions)) return {};
    return file.bytes();
  }

  void warnOfOmissions(const fs::path& file, const std::string& omissions) {
    if (options_.quiet || omissions.empty()) return;
    progress_.clear();
    reportWarning(file, omissions);
  }

  void say(const fs::path& file, const fs::path& target, const Orvo::Document& document) {
    if (options_.quiet) return;
    progress_.clear();
    std::size_t strokes = 0;
    for (const Orvo::Layer& layer : document)
      strokes += layer.size();
    const bool toStandardOutput = isStandardOutput(target);
    const std::string line = nativeName(file) + ": " + counted(document.size(), "layer") + ", " +
                             counted(strokes, "stroke") +
                             (toStandardOutput ? "" : " -> " + nativeName(target)) + "\n";
    std::fputs(line.c_str(), toStandardOutput ? stderr : stdout);
  }

  bool fail(const fs::path& file, const std::string& sentence) {
    progress_.clear();
    reportError(file, sentence);
    return false;
  }

  const ConvertOptions& options_;
  Outputs outputs_;
  Progress progress_;
};

}  // namespace

ExitStatus convertFiles(const ConvertOptions& options) {
  return Converter(options).convertAll() ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace cli
