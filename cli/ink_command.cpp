#include "cli/ink_command.h"

#include "cli/ink_json.h"
#include "cli/input_file.h"
#include "cli/limits.h"
#include "cli/output_file.h"
#include "cli/outputs.h"
#include "cli/prepared_input.h"
#include "cli/rescuing.h"

namespace cli {

namespace {

void mention(const InkOptions& options, const PreparedInput& input, const Recording& recording) {
  const std::string omissions = omissionsOf(recording, input.path());
  if (!omissions.empty()) reportWarning(options.file, omissions);
  if (!input.summary().empty()) reportNote(options.file, input.summary());
}

}  // namespace

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
  const PreparedInput mended(input.path(), {.view = InkView::asSubset, .millimetresPerUnit = {}},
                             options.rescue);
  if (mended.problem()) {
    reportError(options.file, *mended.problem());
    return ExitStatus::failed;
  }
  const Recording recording(mended.path(), kindByName(mended.path()));
  if (!recording.complete()) {
    reportError(options.file,
                withRescue(recording.explainFailure(), mended.path(), recording.kind()));
    return ExitStatus::failed;
  }
  if (!options.quiet) mention(options, mended, recording);
  if (const auto problem = writeOutput(options.output, inkToJson(recording))) {
    reportError(options.output, *problem);
    return ExitStatus::failed;
  }
  return ExitStatus::done;
}

}  // namespace cli
