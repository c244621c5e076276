// Text for the debugger.
#pragma once

namespace platform {

/// Sends `text` (zero-terminated, unchanged, no newline added) to the debugger. Natively it is
/// written to standard error, unbuffered.
void debugOutput(const char* text);

/// The same for wide text; natively it is written as UTF-8.
void debugOutput(const wchar_t* text);

}  // namespace platform
