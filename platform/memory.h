// How the process's memory is managed.
#pragma once

namespace platform {

/// Keeps freed memory for the next allocation instead of handing it back to the system at once: a
/// program that frees what it read before it reads the next thing would spend a third of its time
/// on getting the same pages again. Call it once, before much is allocated. On Windows, and with
/// C libraries other than glibc, nothing changes.
void keepFreedMemory();

}  // namespace platform
