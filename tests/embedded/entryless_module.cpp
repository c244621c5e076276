// A module that exports something, but not PluginMain.
#ifdef _WIN32
#define EXPORTED __declspec(dllexport)
#else
#define EXPORTED __attribute__((visibility("default")))
#endif

extern "C" EXPORTED int notPluginMain() {
  return 1;
}
