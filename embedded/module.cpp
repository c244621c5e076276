#include "embedded/module.h"

#include <cerrno>
#include <filesystem>
#include <new>
#include <string_view>
#include <utility>

#include "platform/paths.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include "platform/descriptor.h"
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

// With a full path, what the module needs is looked for in its own folder.
std::wstring systemPath(const std::string& path) {
  return platform::nativePathToWide(platform::absoluteNativePath(path));
}

bool lacksMemory(const std::string&) {
  return GetLastError() == ERROR_NOT_ENOUGH_MEMORY;
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

// A name without a folder would be searched for on the library path.
std::string systemPath(const std::string& path) {
  return path.find('/') == path.npos ? "./" + path : path;
}

// The loader hides the system's error number, and its sentence has other causes too. So try to map
// the file, twice its size to be safe: if that does not fit into memory, neither does the module.
bool lacksMemory(const std::string& path) {
  const platform::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  struct stat found {};
  if (!file || ::fstat(file.number(), &found) != 0 || found.st_size <= 0) return false;
  const std::size_t size = 2 * static_cast<std::size_t>(found.st_size);
  void* mapped = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.number(), 0);
  if (mapped == MAP_FAILED) return errno == ENOMEM;
  ::munmap(mapped, size);
  return false;
}

std::string lastError() {
  const char* text = dlerror();
  return text == nullptr ? "the system gives no reason" : text;
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

// The system's sentence often begins with the path.
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
    if (lacksMemory(path)) throw std::bad_alloc();
    error = path + ": the plug-in module cannot be loaded: " + causeOf(path);
    return nullptr;
  }
  std::unique_ptr<Module> module(new Module);
  module->library_ = library;
  module->path_ = platform::absoluteNativePath(path);
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
