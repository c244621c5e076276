// Art Style 6 and Path Style 12: named styles and the libraries they come from.
#include "embedded/suites/call.h"
#include "embedded/suites/strings.h"
#include "embedded/suites/tables.h"
#include "embedded/text.h"
#include "stylelib/library.h"

namespace embedded {

using namespace hostapi;

namespace {

constexpr std::size_t kLongestName = 63;  // characters of a style's name

constexpr Function kSetArtStyle{AIArtStyleSuite::kId, "SetArtStyle"};
constexpr Function kAddNamedStyle{AIArtStyleSuite::kId, "AddNamedStyle"};
constexpr Function kGetArtStyleByNameFromDocument{AIArtStyleSuite::kId,
                                                  "GetArtStyleByNameFromDocument"};
constexpr Function kImportStyles{AIPathStyleSuite::kId, "ImportStyles"};

// ---- Art Style ----

AIErr setArtStyle(AIArtHandle art, AIArtStyleHandle style) {
  return answer(
      kSetArtStyle,
      [&](Call& call) {
        call.inHandle("art", art);
        call.inHandle("style", style);
        call.concerns(art);
      },
      [&](Call& call) {
        ArtNode* node = call.host.documents.find(art);
        if (node == nullptr) return call.badHandle("art", art);
        StyleNode* wanted = call.host.documents.find(style);
        if (wanted == nullptr && style != nullptr) return call.badHandle("style", style);
        if (wanted != nullptr && wanted->document != node->layer->document) return kDstStyleErr;
        node->style = wanted;
        return kNoErr;
      });
}

// "name", then "name 2", "name 3" ..., cut so that the number fits.
std::u32string uniqueName(const DocumentNode& document, const std::u32string& name) {
  std::u32string candidate = name;
  for (int number = 2; findStyle(document, encodeUtf8(candidate)) != nullptr; ++number) {
    const std::string digits = " " + std::to_string(number);
    candidate = name.substr(0, kLongestName - digits.size());
    candidate.append(digits.begin(), digits.end());
  }
  return candidate;
}

AIErr addStyle(Call& call, AIArtStyleHandle handle, const UnicodeStringBody& name, bool unique,
               AIArtStyleHandle* named) {
  DocumentNode* document = call.host.documents.current();
  if (document == nullptr) return kNoDocumentErr;
  const StyleNode* source = call.host.documents.find(handle);
  if (source == nullptr) return call.badHandle("style", handle);
  const std::u32string wanted(textOf(call, name).value_or(U""));
  if (wanted.empty() || wanted.size() > kLongestName) return kBadParameterErr;
  if (!unique && findStyle(*document, encodeUtf8(wanted)) != nullptr) return kNameInUseErr;
  art::Style copy = source->style;
  copy.name = encodeUtf8(uniqueName(*document, wanted));
  *named = call.host.documents.addStyle(*document, std::move(copy))->handle;
  return kNoErr;
}

AIErr addNamedStyle(AIArtStyleHandle style, const UnicodeStringBody* name, AIBoolean unique,
                    AIArtStyleHandle* namedStyle) {
  return answer(
      kAddNamedStyle,
      [&](Call& call) {
        call.inHandle("style", style);
        call.inString("name", name);
        call.inBoolean("unique", unique);
        call.outHandle("namedStyle", namedStyle);
      },
      [&](Call& call) { return addStyle(call, style, *name, unique != 0, namedStyle); });
}

// A null document, which a failed import leaves behind, has no styles. Only a host that is told to
// report null handles refuses it.
AIErr getArtStyleByNameFromDocument(AIArtStyleHandle* style, const UnicodeStringBody* name,
                                    AIDocumentHandle document) {
  return answer(
      kGetArtStyleByNameFromDocument,
      [&](Call& call) {
        call.outHandle("style", style);
        call.inString("name", name);
        call.inHandle("document", document);
      },
      [&](Call& call) {
        const DocumentNode* node = call.host.documents.find(document);
        const bool noneIsTaken = call.host.options.nullHandles == NullHandles::refused;
        if (node == nullptr && (document != nullptr || !noneIsTaken)) {
          return call.badHandle("document", document);
        }
        const std::string wanted = encodeUtf8(textOf(call, *name).value_or(U""));
        const StyleNode* found = node == nullptr ? nullptr : findStyle(*node, wanted);
        *style = found == nullptr ? nullptr : found->handle;
        const bool silent = call.host.options.missingStyle == MissingStyle::nullStyle;
        return found != nullptr || silent ? kNoErr : kNameNotFoundErr;
      });
}

// ---- Path Style ----

void noteBadLibrary(Call& call, const std::string& path, const std::string& problem) {
  const bool served = call.host.options.builtInLibrary;
  call.host.note("the brush style library " + path + " was not read: " + problem +
                 "; expected a native file, level 9 to CS6, that lists the graphic style "
                 "TrillowStyle" +
                 (served ? "; the built-in library was used instead" : ""));
}

AIErr import(Call& call, const std::u32string& path, AIDocumentHandle* document) {
  if (path.empty() || path != call.host.libraryPath) return kCantImportErr;
  const std::string native = toNativePath(path);
  stylelib::NativeLibrary library;
  if (stylelib::libraryFileExists(native)) {
    library = stylelib::readLibraryFile(native);
    if (!library.problem.empty()) noteBadLibrary(call, native, library.problem);
  }
  if (library.styles.empty()) {
    if (!call.host.options.builtInLibrary) return kCantImportErr;
    library = stylelib::builtInLibrary();
  }
  *document = call.host.documents.makeLibrary(library.styles)->handle;
  return kNoErr;
}

AIErr importStyles(const FilePathBody* file, AIDocumentHandle* document) {
  return answer(
      kImportStyles,
      [&](Call& call) {
        call.inPath("file", file);
        call.outHandle("document", document);
      },
      [&](Call& call) {
        if (call.host.options.whileImporting) call.host.options.whileImporting();
        const HostPath* path = call.host.paths.find(file->inside);
        return import(call, path == nullptr ? std::u32string() : path->text, document);
      });
}

}  // namespace

AIArtStyleSuite artStyleTable() {
  auto table = tableOfMisuse<AIArtStyleSuite>();
  table.SetArtStyle = setArtStyle;
  table.AddNamedStyle = addNamedStyle;
  table.GetArtStyleByNameFromDocument = getArtStyleByNameFromDocument;
  return table;
}

AIPathStyleSuite pathStyleTable() {
  auto table = tableOfMisuse<AIPathStyleSuite>();
  table.ImportStyles = importStyles;
  return table;
}

}  // namespace embedded
