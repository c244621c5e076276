// The suites of the application as a whole: Notifier 3, User 10, Runtime 11, File Format 12.
#include <algorithm>
#include <cstring>

#include "embedded/suites/call.h"
#include "embedded/suites/strings.h"
#include "embedded/suites/tables.h"
#include "embedded/text.h"

namespace embedded {

using namespace hostapi;

namespace {

constexpr Function kAddNotifier{AINotifierSuite::kId, "AddNotifier"};
constexpr Function kErrorAlert{AIUserSuite::kId, "ErrorAlert", Returns::nothing};
constexpr Function kGetAppMajorVersion{AIRuntimeSuite::kId, "GetAppMajorVersion", Returns::value};
constexpr Function kGetAppMinorVersion{AIRuntimeSuite::kId, "GetAppMinorVersion", Returns::value};
constexpr Function kAddFileFormat{AIFileFormatSuite::kId, "AddFileFormat"};

// ---- Notifier, User, Runtime ----

AIErr addNotifier(SPPluginRef self, const char* name, const char* type,
                  AINotifierHandle* notifier) {
  return answer(
      kAddNotifier,
      [&](Call& call) {
        call.inHandle("self", self);
        call.inText("name", name);
        call.inText("type", type);
        call.outHandleOrNull("notifier", notifier);
      },
      [&](Call& call) {
        if (numberOf(self, HandleKind::plugin) != 1) return call.badHandle("self", self);
        auto& notifiers = call.host.notifiers;
        const auto handle = toHandle<AINotifierHandle>(HandleKind::notifier, notifiers.size() + 1);
        notifiers.push_back({handle, name, type});
        if (notifier != nullptr) *notifier = handle;
        return kNoErr;
      });
}

void errorAlert(const UnicodeStringBody* text) {
  answer(
      kErrorAlert, [&](Call& call) { call.inString("text", text); },
      [&](Call& call) {
        call.host.alerts.push_back(encodeUtf8(textOf(call, *text).value_or(U"")));
        return kNoErr;
      });
}

std::int32_t getAppMajorVersion() {
  return answer(
      kGetAppMajorVersion, [](Call&) {},
      [](Call& call) { return call.host.options.appMajorVersion; });
}

std::int32_t getAppMinorVersion() {
  return answer(
      kGetAppMinorVersion, [](Call&) {},
      [](Call& call) { return call.host.options.appMinorVersion; });
}

// ---- File Format ----

// A host that reads the title as length-prefixed takes its first byte for the length; a leading
// blank then means 32, so 33 bytes are read.
constexpr unsigned char kLeadingBlank = ' ';
constexpr std::size_t kTitleBytes = 33;
constexpr std::size_t kMostExtensions = 31;  // characters in all
constexpr std::size_t kLongestExtension = 5;

std::string titleOf(const PlatformAddFileFormatData& data) {
  return reinterpret_cast<const char*>(data.title);
}

// A title that fills all of these bytes needs no zeros.
bool titleIsFilled(const unsigned char* title) {
  if (title[0] != kLeadingBlank) return true;
  const std::size_t length = std::strlen(reinterpret_cast<const char*>(title));
  return length >= kTitleBytes ||
         std::all_of(title + length, title + kTitleBytes, [](auto byte) { return byte == 0; });
}

bool extensionsFit(std::string_view extensions) {
  if (extensions.size() > kMostExtensions) return false;
  while (!extensions.empty()) {
    const std::size_t comma = std::min(extensions.find(','), extensions.size());
    if (comma > kLongestExtension) return false;
    extensions.remove_prefix(std::min(comma + 1, extensions.size()));
  }
  return true;
}

void describeFormat(Call& call, const PlatformAddFileFormatData* data) {
  call.required("data", data);
  if (data == nullptr) return;
  call.host.journal.beginObject("data");
  call.in("type", data->type);
  call.inText("title", reinterpret_cast<const char*>(data->title));
  call.in("titleOrder", data->titleOrder);
  call.inText("extension", data->extension);
  call.host.journal.endObject();
}

AIErr registerFormat(Call& call, const char* name, const PlatformAddFileFormatData& data,
                     std::int32_t options, AIFileFormatHandle* format) {
  auto& formats = call.host.formats;
  if (!titleIsFilled(data.title)) {
    return call.misbehaves("title is not zero-filled to 33 bytes");
  }
  if (!extensionsFit(data.extension)) {
    return call.misbehaves(
        "extension has more than 31 characters, or one of its parts more than 5");
  }
  if (std::ranges::any_of(formats, [&](const Host::Format& other) { return other.name == name; })) {
    return kNameInUseErr;
  }
  const auto handle = toHandle<AIFileFormatHandle>(HandleKind::format, formats.size() + 1);
  formats.push_back({handle, name, titleOf(data), data.extension, options});
  *format = handle;
  return kNoErr;
}

AIErr addFileFormat(SPPluginRef self, const char* name, const PlatformAddFileFormatData* data,
                    std::int32_t options, AIFileFormatHandle* format,
                    std::int32_t extendedOptions) {
  return answer(
      kAddFileFormat,
      [&](Call& call) {
        call.inHandle("self", self);
        call.inText("name", name);
        describeFormat(call, data);
        call.in("options", options);
        call.outHandle("format", format);
        call.in("extendedOptions", extendedOptions);
      },
      [&](Call& call) {
        if (numberOf(self, HandleKind::plugin) != 1) return call.badHandle("self", self);
        return registerFormat(call, name, *data, options, format);
      });
}

}  // namespace

AINotifierSuite notifierTable() {
  auto table = tableOfMisuse<AINotifierSuite>();
  table.AddNotifier = addNotifier;
  return table;
}

AIUserSuite userTable() {
  auto table = tableOfMisuse<AIUserSuite>();
  table.ErrorAlert = errorAlert;
  return table;
}

AIRuntimeSuite runtimeTable() {
  auto table = tableOfMisuse<AIRuntimeSuite>();
  table.GetAppMajorVersion = getAppMajorVersion;
  table.GetAppMinorVersion = getAppMinorVersion;
  return table;
}

AIFileFormatSuite fileFormatTable() {
  auto table = tableOfMisuse<AIFileFormatSuite>();
  table.AddFileFormat = addFileFormat;
  return table;
}

}  // namespace embedded
