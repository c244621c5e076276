// Limits that the system sets for the process.
#pragma once

namespace platform {

/// Makes writing beyond the process's limit on file sizes fail with the error "file too large",
/// where natively a signal would end the process.
void reportFileSizeLimit();

/// Whether the process may open `count` more files at the same time. Always true on Windows.
bool canOpenFiles(int count);

}  // namespace platform
