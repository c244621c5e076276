// A plug-in module that answers how often it has been called since it was loaded.
#include "hostapi/types.h"

#ifdef _WIN32
#define EXPORTED __declspec(dllexport)
#else
#define EXPORTED __attribute__((visibility("default")))
#endif

extern "C" EXPORTED hostapi::SPErr PluginMain(const char*, const char*, void*) {
  static hostapi::SPErr calls = 0;
  return ++calls;
}
