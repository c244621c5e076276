#include "embedded/suites/paths.h"

#include <utility>

#include "embedded/suites/call.h"
#include "embedded/suites/strings.h"
#include "embedded/suites/tables.h"
#include "hostapi/ai_file_path_suite.h"

namespace embedded {

using namespace hostapi;

std::u32string_view lastName(std::u32string_view path) {
  const std::size_t separator = path.find_last_of(U"/\\");
  return separator == path.npos ? path : path.substr(separator + 1);
}

std::u32string_view extensionOf(std::u32string_view path) {
  const std::u32string_view name = lastName(path);
  const std::size_t dot = name.rfind(U'.');
  return dot == name.npos ? std::u32string_view() : name.substr(dot + 1);
}

namespace {

constexpr Function function(const char* name) {
  return {.suite = AIFilePathSuite::kId, .name = name, .written = false};
}

constexpr Function kNewFilePath = function("NewFilePath");
constexpr Function kDeleteFilePath = function("DeleteFilePath");
constexpr Function kCopy = function("Copy");
constexpr Function kSet = function("Set");
constexpr Function kGetFileExtension = function("GetFileExtension");
constexpr Function kGetFullPath = function("GetFullPath");

// The path's text, empty for an empty path; anything that is not a path is reported as misuse.
std::optional<std::u32string_view> textOf(Call& call, const FilePathBody& path) {
  if (path.inside == nullptr) return std::u32string_view();
  if (const HostPath* inside = call.host.paths.find(path.inside)) return inside->text;
  call.misbehaves(call.host.paths.wasRemoved(path.inside) ? "a deleted file path is used"
                                                          : "this is not a file path of this host");
  return std::nullopt;
}

// Sets the path's text; an empty body gets an inside of its own.
AIErr assign(Call& call, FilePathBody& path, std::u32string text) {
  if (!textOf(call, path)) return call.badParameter();
  if (path.inside == nullptr) {
    path.inside = call.host.paths.add({std::move(text)});
  } else {
    call.host.paths.find(path.inside)->text = std::move(text);
  }
  return kNoErr;
}

// Windows itself accepts both separators.
std::u32string withSystemSeparators(std::u32string_view given) {
  std::u32string text(given);
#ifndef _WIN32
  for (char32_t& character : text)
    if (character == U'\\') character = U'/';
#endif
  return text;
}

AIErr newFilePath(FilePathBody* path) {
  return answer(
      kNewFilePath, [&](Call& call) { call.required("path", path); },
      [&](Call& call) {
        path->inside = call.host.paths.add({});
        return kNoErr;
      });
}

AIErr deleteFilePath(FilePathBody* path) {
  return answer(
      kDeleteFilePath, [&](Call& call) { call.required("path", path); },
      [&](Call& call) {
        if (!textOf(call, *path)) return call.badParameter();
        call.host.paths.remove(path->inside);
        path->inside = nullptr;
        return kNoErr;
      });
}

AIErr copy(const FilePathBody* source, FilePathBody* destination) {
  return answer(
      kCopy,
      [&](Call& call) {
        call.required("source", source);
        call.required("destination", destination);
      },
      [&](Call& call) {
        const auto text = textOf(call, *source);
        return text ? assign(call, *destination, std::u32string(*text)) : call.badParameter();
      });
}

AIErr set(const UnicodeStringBody* text, AIBool8, FilePathBody* path) {
  return answer(
      kSet,
      [&](Call& call) {
        call.required("text", text);
        call.required("path", path);
      },
      [&](Call& call) {
        const auto given = textOf(call, *text);
        return given ? assign(call, *path, withSystemSeparators(*given)) : call.badParameter();
      });
}

AIErr getFileExtension(const FilePathBody* path, UnicodeStringBody* extension) {
  return answer(
      kGetFileExtension,
      [&](Call& call) {
        call.required("path", path);
        call.required("extension", extension);
      },
      [&](Call& call) {
        const auto text = textOf(call, *path);
        if (!text) return call.badParameter();
        return assign(call, *extension, std::u32string(extensionOf(*text)));
      });
}

// The user sees the path's last name.
AIErr getFullPath(const FilePathBody* path, AIBool8 displayName, UnicodeStringBody* text) {
  return answer(
      kGetFullPath,
      [&](Call& call) {
        call.required("path", path);
        call.required("text", text);
      },
      [&](Call& call) {
        const auto full = textOf(call, *path);
        if (!full) return call.badParameter();
        return assign(call, *text, std::u32string(displayName != 0 ? lastName(*full) : *full));
      });
}

}  // namespace

AIFilePathSuite filePathTable() {
  auto table = tableOfMisuse<AIFilePathSuite>();
  table.NewFilePath = newFilePath;
  table.DeleteFilePath = deleteFilePath;
  table.Copy = copy;
  table.Set = set;
  table.GetFileExtension = getFileExtension;
  table.GetFullPath = getFullPath;
  return table;
}

}  // namespace embedded
