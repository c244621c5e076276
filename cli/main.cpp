// The command penwick: its streams and its console, and the errors that end it.
#include <cstdio>
#include <iostream>
#include <memory>
#include <new>

#include "cli/command_line.h"
#include "cli/listing_output.h"
#include "cli/report.h"
#include "platform/command_line.h"
#include "platform/limits.h"
#include "platform/memory.h"
#include "platform/standard_streams.h"

namespace {

using cli::ExitStatus;

ExitStatus runCommand(platform::CommandLine& line) {
  const auto parsed = cli::parseCommandLine(line.count(), line.words());
  if (const auto* status = std::get_if<ExitStatus>(&parsed)) return *status;
  return std::visit([](const auto& words) { return run(words); },
                    std::get<cli::CommandWords>(parsed));
}

// Whether everything that was printed, help included, could be written.
bool standardOutputIsWritten() {
  std::cout.flush();
  return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

}  // namespace

int main(int count, char** words) {
  if (!platform::openClosedStandardStreams()) return static_cast<int>(ExitStatus::failed);
  platform::reportFileSizeLimit();
  platform::keepFreedMemory();
  try {
    const std::shared_ptr<void> console = platform::utf8Console();
    platform::CommandLine line(count, words);
    const ExitStatus status = runCommand(line);
    if (standardOutputIsWritten() || cli::readerHasGone()) return static_cast<int>(status);
    if (status != ExitStatus::done) return static_cast<int>(status);
    cli::reportError("standard output could not be written; is its device full?");
  } catch (const std::bad_alloc&) {
    cli::reportNotEnoughMemory();
  } catch (const std::exception& error) {
    cli::reportError(error.what());
  }
  return static_cast<int>(ExitStatus::failed);
}
