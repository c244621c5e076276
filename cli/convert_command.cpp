#include "cli/convert_command.h"

#include "cli/batch.h"
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

// The serializer writes to a file by its name.
std::optional<std::string> inkmlOf(const Recording& recording) {
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

std::string summaryOf(const Orvo::Document& document) {
  std::size_t strokes = 0;
  for (const Orvo::Layer& layer : document)
    strokes += layer.size();
  return counted(document.size(), "layer") + ", " + counted(strokes, "stroke");
}

}  // namespace

ExitStatus convertFiles(const ConvertOptions& options) {
  Batch batch(options.files, options.outputs, options.quiet);
  const bool allDone = batch.run([&](const fs::path& file, const fs::path& target) {
    const Recording recording(file, options.kind.value_or(kindByName(file)));
    if (!recording.complete()) return batch.fail(file, recording.explainFailure());
    const std::optional<std::string> text = inkmlOf(recording);
    if (!text) {
      return batch.fail(target, "cannot be written: there is no room for a temporary file");
    }
    batch.mention(file, recording.explainOmissions());
    if (!batch.write(target, *text)) return false;
    batch.sayDone(file, target, summaryOf(recording.document()));
    return true;
  });
  return allDone ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace cli
