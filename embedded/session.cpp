#include "embedded/session.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <utility>

#include "hostapi/codes.h"
#include "platform/paths.h"

namespace embedded {

using namespace hostapi;

namespace {

// Access points of "SP Access" messages.
constexpr std::int32_t kAtStartup = 0;
constexpr std::int32_t kAtShutdown = 2;

// Zeroed space for any message record, larger than the largest.
struct alignas(std::max_align_t) MessageBlock {
  std::byte bytes[512]{};

  template <class Record>
  void put(const Record& record) {
    static_assert(sizeof(Record) <= sizeof bytes);
    std::memcpy(bytes, &record, sizeof record);
  }
};

// The old file record: a path as the system writes it, cut to fit its 300 bytes.
void fillFileRecord(char (&record)[300], MessageLayout layout, const std::string& file) {
  std::string text = file;
  std::ranges::replace(text, '/', '\\');
  const bool hasDrive = text.size() > 1 && text[1] == ':';
  if (layout == MessageLayout::networkRecord) {
    text = "\\\\host\\" + text.substr(hasDrive ? 2 : 0);
  } else if (!hasDrive) {
    text = "C:" + text;
  }
  text.copy(record, sizeof record - 1);
}

MessageBlock fileFormatBlock(MessageLayout layout, AIFileFormatHandle format, std::int32_t option,
                             const FilePathBody& path, const std::string& file) {
  MessageBlock block;
  if (layout == MessageLayout::plain) {
    AIFileFormatMessage message{};
    message.fileFormat = format;
    message.option = option;
    message.filePath = path;
    block.put(message);
  } else {
    AIFileFormatMessageWithFileRecord message{};
    message.fileFormat = format;
    fillFileRecord(message.fileRecord, layout, file);
    message.option = option;
    message.filePath = path;
    block.put(message);
  }
  return block;
}

template <class Thing>
std::vector<Thing> from(const std::vector<Thing>& things, std::size_t first) {
  return {things.begin() + static_cast<std::ptrdiff_t>(std::min(first, things.size())),
          things.end()};
}

}  // namespace

std::optional<SPErr> StepReport::code(const std::string& selector) const {
  for (auto message = messages.rbegin(); message != messages.rend(); ++message)
    if (message->selector == selector) return message->code;
  return std::nullopt;
}

bool StepReport::allAnsweredZero() const {
  return std::ranges::all_of(messages,
                             [](const MessageAnswer& answer) { return answer.code == 0; });
}

// How long the host's lists were when a step began.
struct Session::Mark {
  std::size_t alerts;
  std::size_t misuse;
  std::size_t notes;
  std::size_t calls;
};

Session::Session(std::unique_ptr<Module> module, Options options)
    : module_(std::move(module)), host_(std::move(options)) {
  if (host_.options().pluginName.empty()) host_.setPluginName(module_->name());
}

Session::~Session() {
  end();
}

Session::Mark Session::mark() const {
  return {host_.alerts().size(), host_.misuse().size(), host_.notes().size(),
          host_.journal().size()};
}

void Session::finish(StepReport& report, const Mark& since) {
  report.alerts = from(host_.alerts(), since.alerts);
  report.misuse = from(host_.misuse(), since.misuse);
  report.notes = from(host_.notes(), since.notes);
  report.firstFailure = host_.journal().firstFailure(since.calls);
  report.output = takeOutput();
}

StepReport Session::start() {
  StepReport report;
  const Mark since = mark();
  SPAccessMessage reload{};
  reload.when = kAtStartup;
  MessageBlock block;
  block.put(reload);
  sendTo(report, caller::kAccess, selector::kReload, block.bytes);
  started_ = sendTo(report, caller::kInterface, selector::kStartup, nullptr) == kNoErr;
  if (started_) {
    for (const Host::Notifier& notifier : std::vector(host_.notifiers())) {
      if (notifier.type != kApplicationStarted) continue;
      AINotifierMessage message{};
      message.notifier = notifier.handle;
      message.type = kApplicationStarted;
      block = {};
      block.put(message);
      sendTo(report, caller::kNotifier, selector::kNotify, block.bytes);
    }
  }
  finish(report, since);
  return report;
}

Opening Session::open(const std::string& file) {
  Opening opening;
  const Mark since = mark();
  if (!started_) {
    opening.problem = "the plug-in did not start";
  } else if (host_.formats().empty()) {
    opening.problem = "the plug-in registered no file format";
  } else {
    host_.newDocument();
    static_cast<void>(sendFormatTo(opening, selector::kCheck, file) &&
                      sendFormatTo(opening, selector::kGetParameters, file) &&
                      sendFormatTo(opening, selector::kGo, file));
    opening.builderRan = host_.builderRan();
    opening.document = host_.takeDocument();
  }
  finish(opening, since);
  return opening;
}

StepReport Session::end() {
  StepReport report;
  if (std::exchange(ended_, true)) return report;
  const Mark since = mark();
  if (std::exchange(started_, false)) {
    sendTo(report, caller::kInterface, selector::kShutdown, nullptr);
  }
  SPAccessMessage unload{};
  unload.when = kAtShutdown;
  MessageBlock block;
  block.put(unload);
  sendTo(report, caller::kAccess, selector::kUnload, block.bytes);
  host_.checkSuitesReleased();
  const std::string path = module_->path();
  const bool closed = module_->unload();
  unloaded_ = closed && (path.empty() || !Module::isResident(path));
  finish(report, since);
  return report;
}

SPErr Session::sendTo(StepReport& report, const char* caller, const char* selector, void* record) {
  const SPErr code = send(caller, selector, record);
  report.messages.push_back({caller, selector, code});
  return code;
}

bool Session::sendFormatTo(StepReport& report, const char* selector, const std::string& file) {
  const SPErr code = sendFileFormat(selector, file);
  report.messages.push_back({caller::kFileFormat, selector, code});
  return code == kNoErr;
}

SPErr Session::sendFileFormat(const char* selector, const std::string& file, std::int32_t option) {
  const std::string full = platform::absoluteNativePath(file);
  const AIFileFormatHandle format =
      host_.formats().empty() ? nullptr : host_.formats().front().handle;
  FilePathBody path = host_.makeFilePath(full);
  MessageBlock block = fileFormatBlock(host_.options().messageLayout, format, option, path, full);
  const SPErr code = send(caller::kFileFormat, selector, block.bytes);
  host_.freeFilePath(path);
  return code;
}

SPErr Session::send(const char* caller, const char* selector, void* record) {
  if (module_->entry() == nullptr) return kCantHappenErr;
  MessageBlock block;
  void* message = record == nullptr ? block.bytes : record;
  const SPMessageData common{kSPCheck, host_.plugin(), globals_, host_.basic()};
  std::memcpy(message, &common, sizeof common);

  std::optional<OutputCapture> capture;
  if (host_.options().captureOutput) capture.emplace();
  SPErr code = kCantHappenErr;
  try {
    code = module_->entry()(caller, selector, message);
  } catch (...) {
    host_.addMisuse(std::string("an exception left PluginMain during \"") + caller + "\" \"" +
                    selector + '"');
  }
  if (capture) output_ += capture->finish();

  SPMessageData after{};
  std::memcpy(&after, message, sizeof after);
  globals_ = after.globals;
  return code;
}

CapturedOutput Session::takeOutput() {
  return std::exchange(output_, {});
}

}  // namespace embedded
