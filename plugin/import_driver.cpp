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

// What a file-format message asks for, from either known layout of its record.
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

// The comparison is exact and case-sensitive; a file with any other extension is read as the kind
// of the file before it. Each string is made just before it is compared, except that the first one
// is made before the extension is asked for: the first of these steps to fail determines the answer
// to the host.
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
  const auto held = heldFunction(function);
  return held == nullptr ? 0 : held();
}

bool isOpening = false;

// Only one file is opened at a time in the process: the host opens a document to import its styles,
// and may meanwhile ask the plug-in to open another file. That one is cancelled before it changes
// anything that the current one works with.
class OnlyOpening {
 public:
  OnlyOpening() {
    if (isOpening) throw ai::Error(kCancelledErr);
    isOpening = true;
  }
  ~OnlyOpening() { isOpening = false; }
  OnlyOpening(const OnlyOpening&) = delete;
  OnlyOpening& operator=(const OnlyOpening&) = delete;
};

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
  // The printed number is asked for separately.
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
  const OnlyOpening only;
  const OpenRequest request = readRequest(record);
  const ai::UnicodeString path = ai::fullPath(request.file, false);
  chooseFileKind(request.file);
  loadBrushStyle();
  if ((request.option & kFileFormatRead) == 0) return kNoErr;

  const Orvo::SharedRef<Orvo::Document> ink = Orvo::loadDocument(path.toWide().c_str());
  if (ink && ink->complete.value) buildArt(ink);
  return kNoErr;
}
