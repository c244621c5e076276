// The checks of the fuzz targets, as functions of this program.
#pragma once

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <unistd.h>

extern "C" {
int checkPenRescue(const std::uint8_t* data, std::size_t size);
int checkInk(const std::uint8_t* data, std::size_t size);
int checkInkRescue(const std::uint8_t* data, std::size_t size);
int checkTranslation(const std::uint8_t* data, std::size_t size);
}

namespace spaces {

using FuzzCheck = int (*)(const std::uint8_t* data, std::size_t size);

/// A check that fails ends the program: this says first in which case.
inline std::string currentCase;  // NOLINT: for the handler of a signal

inline void nameCaseAtTheEnd() {
  static_cast<void>(std::signal(SIGABRT, [](int) {
    static_cast<void>(::write(STDERR_FILENO, currentCase.data(), currentCase.size()));
    static_cast<void>(::write(STDERR_FILENO, "\n", 1));
    static_cast<void>(std::signal(SIGABRT, SIG_DFL));
    std::abort();
  }));
}

inline void run(FuzzCheck check, std::string_view bytes) {
  check(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace spaces
