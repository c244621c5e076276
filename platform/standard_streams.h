// Standard streams that were closed when the process was started.
#pragma once

namespace platform {

/// Opens standard input, output and error on the null device where the process was started without
/// them; otherwise the next file to be opened would take their place, and messages would be written
/// into it. Call it before anything else. False if the null device cannot be opened.
bool openClosedStandardStreams();

/// Whether standard output was closed when `openClosedStandardStreams` was called, so that what is
/// written there reaches nobody.
bool standardOutputWasClosed();

}  // namespace platform
