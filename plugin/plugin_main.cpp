// The module's one exported function.
#include <new>

#include "hostapi/codes.h"
#include "plugin/guarded.h"
#include "plugin/kvoexportfileplugin.h"

#if defined(_WIN32)
#define PENWICK_EXPORT __declspec(dllexport)
#else
#define PENWICK_EXPORT __attribute__((visibility("default")))
#endif

using namespace hostapi;

namespace {

SPErr endPlugin(SPMessageData& data, Plugin& plugin) {
  auto* record = reinterpret_cast<SPInterfaceMessage*>(&data);
  const SPErr result = plugin.guarded(caller::kInterface, selector::kShutdown,
                                      [&] { return plugin.shutdownPlugin(record); });
  data.globals = nullptr;
  delete &plugin;
  return result;
}

SPErr startPlugin(SPMessageData& data) {
  auto* plugin = new (std::nothrow) kvoexportfileplugin(data.self);
  if (plugin == nullptr) {
    Plugin::showErrorAlert(kOutOfMemoryErr);
    return kOutOfMemoryErr;
  }
  data.globals = static_cast<Plugin*>(plugin);
  auto* record = reinterpret_cast<SPInterfaceMessage*>(&data);
  const SPErr result = plugin->guarded(caller::kInterface, selector::kStartup,
                                       [&] { return plugin->startupPlugin(record); });
  if (result != kNoErr) endPlugin(data, *plugin);
  return result;
}

}  // namespace

extern "C" PENWICK_EXPORT SPErr PluginMain(const char* caller, const char* selector,
                                           void* message) {
  auto& data = *static_cast<SPMessageData*>(message);
  basicSuite = data.basic;

  const std::string_view from = caller;
  const std::string_view what = selector;
  if (from == caller::kInterface && what == selector::kStartup) return startPlugin(data);

  // Before start-up, after a failed one and after shut-down there is no object.
  auto* plugin = static_cast<Plugin*>(data.globals);
  if (plugin == nullptr) return kNoErr;
  if (from == caller::kInterface && what == selector::kShutdown) return endPlugin(data, *plugin);
  return plugin->message(from, what, message);
}
