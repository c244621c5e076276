#include "cli/ink_command.h"

#include "cli/ink_json.h"
#include "cli/input_file.h"
#include "cli/limits.h"
#include "cli/output_file.h"
#include "cli/outputs.h"

namespace cli {

ExitStatus showInk(const InkOptions& options) {
  if (const auto refusal = refusalToOpenFiles()) {
    reportError(options.file, *refusal);
    return ExitStatus::failed;
  }
  if (const auto refusal =
          refusalToOverwrite(options.file, options.output, options.replaceRecordings)) {
    reportError(options.output, *refusal);
    return ExitStatus::failed;
  }
  const InputFile input(options.file, options.kind);
  if (input.problem()) {
    reportError(options.file, *input.problem());
    return ExitStatus::failed;
  }
  const Recording recording(input.path(), kindByName(input.path()));
  if (!recording.complete()) {
    reportError(options.file, recording.explainFailure());
    return ExitStatus::failed;
  }
  const std::string omissions = recording.explainOmissions();
  if (!omissions.empty() && !options.quiet) reportWarning(options.file, omissions);
  if (const auto problem = writeOutput(options.output, inkToJson(recording))) {
    reportError(options.output, *problem);
    return ExitStatus::failed;
  }
  return ExitStatus::done;
}

}  // namespace cli
