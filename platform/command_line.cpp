#include "platform/command_line.h"

#ifdef _WIN32
#include <windows.h>

#include "platform/paths.h"

// The C library's own parser of the wide command line, which no header of the compiler declares.
struct StartupInfo {
  int newMode;
};
extern "C" __declspec(dllimport) int __wgetmainargs(int* count, wchar_t*** words,
                                                    wchar_t*** environment, int expandWildcards,
                                                    StartupInfo* info);
#endif

namespace platform {

#ifdef _WIN32

CommandLine::CommandLine(int count, char** words) : texts_(words, words + count) {
  constexpr int kExpandWildcards = 1;
  int wideCount = 0;
  wchar_t** wideWords = nullptr;
  wchar_t** environment = nullptr;
  StartupInfo start{};
  if (__wgetmainargs(&wideCount, &wideWords, &environment, kExpandWildcards, &start) == 0) {
    texts_.clear();
    for (int i = 0; i < wideCount; ++i)
      texts_.push_back(wideToNativePath(wideWords[i]));
  }
  pointToTexts();
}

namespace {

// Restores the console's own code page at the end.
struct ConsoleGuard {
  explicit ConsoleGuard(UINT codePage) : before(codePage) { SetConsoleOutputCP(CP_UTF8); }
  ~ConsoleGuard() { SetConsoleOutputCP(before); }
  ConsoleGuard(const ConsoleGuard&) = delete;
  ConsoleGuard& operator=(const ConsoleGuard&) = delete;

  UINT before;
};

}  // namespace

std::shared_ptr<void> utf8Console() {
  const UINT before = GetConsoleOutputCP();
  return before == 0 ? nullptr : std::make_shared<ConsoleGuard>(before);
}

#else

CommandLine::CommandLine(int count, char** words) : texts_(words, words + count) {
  pointToTexts();
}

std::shared_ptr<void> utf8Console() {
  return nullptr;
}

#endif

void CommandLine::pointToTexts() {
  for (std::string& text : texts_)
    words_.push_back(text.data());
  words_.push_back(nullptr);
}

}  // namespace platform
