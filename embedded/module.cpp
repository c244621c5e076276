#include "embedded/module.h"

#include <filesystem>
#include <string_view>
#include <utility>

#include "platform/paths.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace embedded {

namespace {

// The file's name without folder and ending.
std::string nameOf(const std::string& path) {
  const std::size_t separator = path.find_last_of("/\\");
  std::string name = separator == path.npos ? path : path.substr(separator + 1);
  if (const std::size_t dot = name.rfind('.'); dot != name.npos && dot != 0) name.resize(dot);
  return name;
}

#ifdef _WIN32

// The full path: then the folder of the module is searched for what it needs, and not the path.
std::wstring systemPath(const std::string& path) {
  std::error_code error;
  const std::filesystem::path wide(platform::nativePathToWide(path));
  const std::filesystem::path full = std::filesystem::absolute(wide, error);
  return error ? wide.wstring() : full.wstring();
}

std::string lastError() {
  const DWORD code = GetLastError();
  wchar_t text[512];
  DWORD size = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                              code, 0, text, 512, nullptr);
  while (size > 0 && (text[size - 1] == L'\n' || text[size - 1] == L'\r' || text[size - 1] == L'.'))
    --size;
  if (size == 0) return "system error " + std::to_string(code);
  return platform::wideToNativePath(std::wstring_view(text, size));
}

void* openLibrary(const std::string& path) {
  return LoadLibraryExW(systemPath(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

hostapi::PluginMainFunction findEntry(void* library) {
  return reinterpret_cast<hostapi::PluginMainFunction>(reinterpret_cast<void*>(
      GetProcAddress(static_cast<HMODULE>(library), hostapi::kPluginMainName)));
}

bool closeLibrary(void* library) {
  return FreeLibrary(static_cast<HMODULE>(library)) != 0;
}

bool inMemory(const std::string& path) {
  return GetModuleHandleW(systemPath(path).c_str()) != nullptr;
}

#else

// A name without a folder would be looked for on the library path.
std::string systemPath(const std::string& path) {
  return path.find('/') == path.npos ? "./" + path : path;
}

std::string lastError() {
  const char* text = dlerror();
  return text == nullptr ? "the system gives no cause" : text;
}

void* openLibrary(const std::string& path) {
  return dlopen(systemPath(path).c_str(), RTLD_NOW | RTLD_LOCAL);
}

hostapi::PluginMainFunction findEntry(void* library) {
  return reinterpret_cast<hostapi::PluginMainFunction>(dlsym(library, hostapi::kPluginMainName));
}

bool closeLibrary(void* library) {
  return dlclose(library) == 0;
}

bool inMemory(const std::string& path) {
  void* library = dlopen(systemPath(path).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
  if (library != nullptr) dlclose(library);
  return library != nullptr;
}

#endif

// The system's own sentence often begins with the path.
std::string causeOf(const std::string& path) {
  std::string cause = lastError();
  for (const std::string& lead : {path + ": ", "./" + path + ": "})
    if (cause.starts_with(lead)) return cause.substr(lead.size());
  return cause;
}

}  // namespace

std::unique_ptr<Module> Module::load(const std::string& path, std::string& error) {
  void* library = openLibrary(path);
  if (library == nullptr) {
    error = path + ": the plug-in module cannot be loaded: " + causeOf(path);
    return nullptr;
  }
  std::unique_ptr<Module> module(new Module);
  module->library_ = library;
  module->path_ = path;
  module->name_ = nameOf(path);
  module->entry_ = findEntry(library);
  if (module->entry_ == nullptr) {
    error = path + ": the plug-in module has no " + hostapi::kPluginMainName + ": " + causeOf(path);
    return nullptr;
  }
  return module;
}

std::unique_ptr<Module> Module::ofEntry(hostapi::PluginMainFunction entry, std::string name) {
  std::unique_ptr<Module> module(new Module);
  module->entry_ = entry;
  module->name_ = std::move(name);
  return module;
}

bool Module::isResident(const std::string& path) {
  return inMemory(path);
}

Module::~Module() {
  unload();
}

bool Module::unload() {
  entry_ = nullptr;
  void* library = std::exchange(library_, nullptr);
  return library == nullptr || closeLibrary(library);
}

}  // namespace embedded
