// The library file that holds the art style which turns pressure into width.
#include <string>

#include "hostapi/ai_art_style_suite.h"
#include "hostapi/ai_path_style_suite.h"
#include "platform/debug_output.h"
#include "platform/folders.h"
#include "plugin/error.h"
#include "plugin/file_path.h"
#include "plugin/kvoexportfileplugin.h"

using namespace hostapi;

namespace {

constexpr char kLibraryFile[] = "\\Penwick\\brush_pressure.ai";
constexpr char kLibraryStyle[] = "TrillowStyle";

// Empty when the system names no such folder.
std::wstring libraryFolder() {
  const std::optional<std::wstring> folder = platform::localAppDataFolder();
  if (!folder) return {};
  platform::debugOutput(folder->c_str());
  return *folder;
}

ai::FilePath libraryPath() {
  ai::UnicodeString text = ai::UnicodeString::fromWide(libraryFolder());
  text.append(ai::UnicodeString(kLibraryFile));
  return ai::FilePath(text);
}

}  // namespace

// The result of the import is ignored: a missing library is noticed when the style is looked up in
// a null document. The document is never closed; the host keeps it until it quits.
void kvoexportfileplugin::loadBrushStyle() {
  const ai::FilePath path = libraryPath();
  brushDocument = nullptr;
  brushStyle = nullptr;
  call(&AIPathStyleSuite::ImportStyles, path.body(), &brushDocument);
  const ai::UnicodeString styleName(kLibraryStyle);
  ai::throwIfFailed(call(&AIArtStyleSuite::GetArtStyleByNameFromDocument, &brushStyle,
                         styleName.body(), brushDocument));
}
