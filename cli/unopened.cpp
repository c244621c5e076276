#include "cli/unopened.h"

#include "cli/recording.h"
#include "cli/rescuing.h"
#include "cli/sentences.h"

namespace cli {

std::string explainUnopened(const PluginRun& run, const std::filesystem::path& file) {
  if (!run.readNothing) return joined(run.refusal, run.notes);
  const Recording recording(file, kindByName(file));
  if (recording.complete()) return "the plug-in read it but drew nothing, and no call failed";
  return withRescue(recording.explainFailure(), file, recording.kind());
}

}  // namespace cli
