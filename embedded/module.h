// A plug-in module in memory.
#pragma once

#include <memory>
#include <string>

#include "hostapi/messages.h"

namespace embedded {

/// A loaded plug-in module and its `PluginMain`. Unloaded by the destructor.
class Module {
 public:
  /// Loads the shared object or DLL at `path` (the bytes that the system's narrow calls take) and
  /// finds `PluginMain` in it by name. Null on failure; `error` is then one sentence with the path
  /// and the cause. Throws `std::bad_alloc` when there is not enough memory for the module.
  static std::unique_ptr<Module> load(const std::string& path, std::string& error);

  /// Wraps an entry that is part of this program; unloading it only clears the pointer.
  static std::unique_ptr<Module> ofEntry(hostapi::PluginMainFunction entry,
                                         std::string name = "plug-in");

  /// True while the module at `path` is in this process's memory, whoever loaded it. A module that
  /// stays there after `unload` keeps its state when it is loaded again.
  static bool isResident(const std::string& path);

  ~Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  /// Null after `unload`.
  hostapi::PluginMainFunction entry() const { return entry_; }
  /// The absolute path it was loaded from; empty for a wrapped entry.
  const std::string& path() const { return path_; }
  /// The file's name without folder and ending, or the name given to `ofEntry`: what the host calls
  /// the plug-in unless it is given another name.
  const std::string& name() const { return name_; }

  /// Unloads the module from memory; false when the system reports a failure. Does nothing the
  /// second time.
  bool unload();

 private:
  Module() = default;

  void* library_ = nullptr;
  hostapi::PluginMainFunction entry_ = nullptr;
  std::string path_;
  std::string name_;
};

}  // namespace embedded
