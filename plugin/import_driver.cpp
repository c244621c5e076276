// Start-up, registration of the file format, and the opening of one file.
#include <cstdio>
#include <cstring>
#include <vector>

#include "hostapi/ai_file_format_suite.h"
#include "hostapi/ai_runtime_suite.h"
#include "penfile/document_loader.h"
#include "plugin/file_path.h"
#include "plugin/guarded.h"
#include "plugin/kvoexportfileplugin.h"

using namespace hostapi;

namespace {

constexpr char kPluginName[] = "kvoexportfile";
constexpr char kFormatName[] = "  Morva Penwick vector files";  // two leading blanks
constexpr char kFormatTitle[] = " Morva Penwick vector files";  // one leading blank
constexpr std::size_t kTitleBufferSize = 1024;  // zero-filled: a host may read a length from it

// What a file-format message asks, from either known layout of its record.
struct OpenRequest {
  std::int32_t option;
  const FilePathBody& file;
};

// A file record begins with a drive letter and ':' or with two backslashes.
bool hasFileRecord(const void* record) {
  const char* bytes = static_cast<const AIFileFormatMessageWithFileRecord*>(record)->fileRecord;
  const bool letter = (bytes[0] >= 'A' && bytes[0] <= 'Z') || (bytes[0] >= 'a' && bytes[0] <= 'z');
  return (letter && bytes[1] == ':') || (bytes[0] == '\\' && bytes[1] == '\\');
}

OpenRequest readRequest(const void* record) {
  if (hasFileRecord(record)) {
    const auto& message = *static_cast<const AIFileFormatMessageWithFileRecord*>(record);
    return {message.option, message.filePath};
  }
  const auto& message = *static_cast<const AIFileFormatMessage*>(record);
  return {message.option, message.filePath};
}

bool is(const ai::UnicodeString& extension, const char* text) {
  return extension.compare(ai::UnicodeString(text)) == 0;
}

// Exact and case-sensitive. With another extension a file is read as the one before it was. Each
// string to compare with is made when its turn comes, the first one before the extension is taken:
// the first of these steps that fails gives the answer to the host.
void chooseFileKind(const FilePathBody& file) {
  const ai::UnicodeString pnx("pnx");
  const ai::UnicodeString extension = ai::FilePath(file).GetFileExtension();
  if (extension.compare(pnx) == 0 || is(extension, "eli")) {
    Orvo::fileKind = Orvo::kPenFile;
  } else if (is(extension, "kvo") || is(extension, "inkml")) {
    Orvo::fileKind = Orvo::kInkML;
  }
}

std::int32_t versionNumber(std::int32_t (*AIRuntimeSuite::*function)()) {
  const auto* suite = heldSuite<AIRuntimeSuite>;
  return suite == nullptr || suite->*function == nullptr ? 0 : (suite->*function)();
}

}  // namespace

kvoexportfileplugin::kvoexportfileplugin(SPPluginRef selfReference) : Plugin(selfReference) {
  setName(kPluginName);
}

SPErr kvoexportfileplugin::message(std::string_view caller, std::string_view selector,
                                   void* record) {
  return guarded(caller, selector, [&] { return Plugin::message(caller, selector, record); });
}

SPErr kvoexportfileplugin::startupPlugin(SPInterfaceMessage* record) {
  ai::throwIfFailed(Plugin::startupPlugin(record));
  appMajorVersion = versionNumber(&AIRuntimeSuite::GetAppMajorVersion);
  appMinorVersion = versionNumber(&AIRuntimeSuite::GetAppMinorVersion);
  // What is printed is asked for once more.
  const std::int32_t printedMinor = versionNumber(&AIRuntimeSuite::GetAppMinorVersion);
  std::printf("AI Major version %d , Minor version %d\n", appMajorVersion, printedMinor);
  registerFileFormat(record);
  return kNoErr;
}

void kvoexportfileplugin::registerFileFormat(SPInterfaceMessage* record) {
  std::vector<unsigned char> title(kTitleBufferSize);
  std::memcpy(title.data(), kFormatTitle, sizeof kFormatTitle);
  char extensions[] = "pnx,kvo";
  const PlatformAddFileFormatData data{
      .type = 0, .title = title.data(), .titleOrder = 0, .extension = extensions};
  ai::throwIfFailed(call(&AIFileFormatSuite::AddFileFormat, record->d.self, kFormatName, &data,
                         kFileFormatRead, &fileFormat, 0));
}

SPErr kvoexportfileplugin::goFileFormat(void* record) {
  const OpenRequest request = readRequest(record);
  const ai::UnicodeString path = ai::fullPath(request.file, false);
  chooseFileKind(request.file);
  loadBrushStyle();
  if ((request.option & kFileFormatRead) == 0) return kNoErr;

  const Orvo::SharedRef<Orvo::Document> ink = Orvo::loadDocument(path.toWide().c_str());
  if (ink && ink->complete.value) buildArt(ink);
  return kNoErr;
}
