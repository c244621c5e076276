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

// The plug-in object of a host, which keeps its address and names it in every message. An address
// that is not that of a living one is not used.
class KeptByHost final : public kvoexportfileplugin {
 public:
  explicit KeptByHost(SPPluginRef own) : kvoexportfileplugin(own), older_(newest) { newest = this; }
  ~KeptByHost() override {
    KeptByHost** link = &newest;
    while (*link != this)
      link = &(*link)->older_;
    *link = older_;
  }
  KeptByHost(const KeptByHost&) = delete;
  KeptByHost& operator=(const KeptByHost&) = delete;

  /// Null where none lives.
  static Plugin* at(const void* globals) {
    for (KeptByHost* kept = newest; kept != nullptr; kept = kept->older_)
      if (static_cast<Plugin*>(kept) == globals) return kept;
    return nullptr;
  }

 private:
  inline static KeptByHost* newest = nullptr;
  KeptByHost* older_;
};

SPErr endPlugin(SPMessageData& data, Plugin& plugin) {
  auto* record = reinterpret_cast<SPInterfaceMessage*>(&data);
  const SPErr result = plugin.guarded(caller::kInterface, selector::kShutdown,
                                      [&] { return plugin.shutdownPlugin(record); });
  data.globals = nullptr;
  delete &plugin;
  return result;
}

SPErr startPlugin(SPMessageData& data) {
  // The host would refuse the format a second time: the plug-in goes on as it is.
  if (KeptByHost::at(data.globals) != nullptr) return kNoErr;
  auto* plugin = new (std::nothrow) KeptByHost(data.self);
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
  if (caller == nullptr || selector == nullptr || message == nullptr) return kNoErr;
  auto& data = *static_cast<SPMessageData*>(message);
  basicSuite = data.basic;

  const std::string_view from = caller;
  const std::string_view what = selector;
  if (from == caller::kInterface && what == selector::kStartup) return startPlugin(data);

  // Before start-up, after a failed one and after shut-down there is no object.
  Plugin* plugin = KeptByHost::at(data.globals);
  if (plugin == nullptr) return kNoErr;
  if (from == caller::kInterface && what == selector::kShutdown) return endPlugin(data, *plugin);
  return plugin->message(from, what, message);
}
