#include "cli/convert_command.h"

#include "cli/batch.h"
#include "cli/ink_preparation.h"
#include "cli/prepared_input.h"
#include "cli/read_back.h"
#include "cli/rescuing.h"
#include "cli/sentences.h"
#include "cli/stroke_times.h"
#include "cli/temporary_file.h"
#include "inkml/document_serializer.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

std::string changesOf(std::size_t cleanedTexts, const ReadBackDifferences& differences) {
  std::string changes;
  if (cleanedTexts > 0) {
    addPart(changes, counted(cleanedTexts, "text has", "texts have") +
                         " characters that XML does not allow, each becomes U+FFFD");
  }
  const std::string readBack = describe(differences);
  if (!readBack.empty()) addPart(changes, readBack);
  return changes.empty() ? changes : "some values change: " + changes;
}

std::string summaryOf(const Orvo::Document& document) {
  std::size_t strokes = 0;
  for (const Orvo::Layer& layer : document)
    strokes += layer.size();
  return counted(document.size(), "layer") + ", " + counted(strokes, "stroke");
}

bool convertFile(Batch& batch, const ConvertOptions& options, const fs::path& file,
                 const fs::path& target) {
  const PreparedInput input(file, options.ink, options.rescue);
  if (input.problem()) return batch.fail(file, *input.problem());
  const Recording recording(input.path(), kindByName(input.path()));
  if (!recording.complete()) {
    return batch.fail(file, withRescue(recording.explainFailure(), input.path(), recording.kind()));
  }
  Orvo::Document& document = recording.document();
  if (recording.kind() == FileKind::pen && !takePenTimes(document, input.path())) {
    return batch.fail(file, "the file changed while it was read; try again");
  }
  if (!options.exact) roundCoordinates(document);
  Orvo::InkMLDefinitions none;
  Orvo::InkMLDefinitions* own = recording.definitions();
  Orvo::InkMLDefinitions& definitions = own == nullptr ? none : *own;
  const std::size_t cleanedTexts = replaceForbiddenCharacters(document, definitions);
  uncrossBrushFlags(definitions);
  declareDefaultContext(definitions, lastTime(document));

  // The serializer writes to a file by its name.
  const TemporaryFile written;
  const std::wstring name = wideName(written.path());
  if (!Orvo::DocumentSerializer(&document).write(name.c_str(), definitions)) {
    return batch.fail(target, "cannot be written: there is no space for a temporary file");
  }
  const Orvo::InkReading readBack = Orvo::readInk(name.c_str());
  if (const auto problem = explainUnusable(readBack.report)) return batch.fail(target, *problem);

  if (input.translation()) batch.mentionAll(file, input.translation()->remarks);
  batch.mention(file, omissionsOf(recording, input.path()));
  batch.mention(file, changesOf(cleanedTexts, compareReadBack(document, definitions, readBack)));
  if (!batch.write(target, written.bytes())) return false;
  batch.sayDone(file, target, joined(summaryOf(document), input.summary()));
  return true;
}

}  // namespace

ExitStatus convertFiles(const ConvertOptions& options) {
  Batch batch(options, "converted");
  const bool allDone = batch.run([&](const fs::path& file, const fs::path& target) {
    return convertFile(batch, options, file, target);
  });
  return allDone ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace cli
