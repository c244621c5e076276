#include "embedded/suites/call.h"

#include <cstring>
#include <string_view>

#include "embedded/suites/paths.h"
#include "embedded/text.h"

namespace embedded {

using namespace hostapi;

namespace {

template <class Value>
Value valueAt(const void* place) {
  Value value;
  std::memcpy(&value, place, sizeof value);
  return value;
}

template <class Value>
void putAt(void* place, Value value) {
  std::memcpy(place, &value, sizeof value);
}

// What a failed call leaves behind. No handle of this host and no address looks like this one.
constexpr std::int16_t kNumberOfNothing = 99;
constexpr std::uint64_t kHandleOfNothing = 0x7777777777777770;

}  // namespace

void Call::inText(const char* name, const char* text) {
  required(name, text);
  if (text == nullptr) {
    host.journal.addNull(name);
  } else {
    host.journal.addText(name, text);
  }
}

void Call::inString(const char* name, const UnicodeStringBody* string) {
  required(name, string);
  const HostString* inside = string == nullptr ? nullptr : host.strings.find(string->inside);
  if (string != nullptr && string->inside != nullptr && inside == nullptr) {
    missingPointer_ = true;
    misbehaves(std::string(name) + (host.strings.wasRemoved(string->inside)
                                        ? " is a string that was destroyed"
                                        : " is not a string of this host"));
  }
  host.journal.addText(name, inside == nullptr ? std::string() : encodeUtf8(inside->text));
}

void Call::inPath(const char* name, const FilePathBody* path) {
  required(name, path);
  const HostPath* inside = path == nullptr ? nullptr : host.paths.find(path->inside);
  if (path != nullptr && path->inside != nullptr && inside == nullptr) {
    missingPointer_ = true;
    misbehaves(std::string(name) + (host.paths.wasRemoved(path->inside)
                                        ? " is a file path that was deleted"
                                        : " is not a file path of this host"));
  }
  if (inside == nullptr) {
    host.journal.addNull(name);
  } else {
    host.journal.addText(name, toNativePath(lastName(inside->text)));
  }
}

void Call::required(const char* name, const void* pointer) {
  if (pointer != nullptr) return;
  missingPointer_ = true;
  misbehaves(std::string(name) + " is a null pointer");
}

void Call::addOut(const char* name, void* place, OutKind kind) {
  required(name, place);
  host.journal.addNull(name);
  outs_.at(outCount_++) = {place, host.journal.lastArgument(), kind};
}

void Call::record(const Out& out) {
  Journal& journal = host.journal;
  switch (out.kind) {
    case OutKind::integer16:
      journal.setInteger(out.argument, valueAt<std::int16_t>(out.place));
      break;
    case OutKind::integer:
      journal.setInteger(out.argument, valueAt<std::int32_t>(out.place));
      break;
    case OutKind::boolean:
      journal.setBoolean(out.argument, valueAt<AIBoolean>(out.place) != 0);
      break;
    case OutKind::handle:
      journal.setHandle(out.argument, valueAt<const void*>(out.place));
      break;
    case OutKind::text:
      journal.setText(out.argument, valueAt<const char*>(out.place));
      break;
  }
}

void Call::fillOuts() {
  for (std::size_t i = 0; i < outCount_; ++i)
    fill(outs_[i]);
}

void Call::fill(const Out& out) {
  if (out.place == nullptr) return;
  switch (out.kind) {
    case OutKind::integer16:
      putAt(out.place, kNumberOfNothing);
      break;
    case OutKind::integer:
      putAt(out.place, std::int32_t{kNumberOfNothing});
      break;
    case OutKind::boolean:
      putAt(out.place, AIBoolean{0});
      break;
    case OutKind::handle:
      putAt(out.place, kHandleOfNothing);
      break;
    case OutKind::text:
      putAt<const char*>(out.place, "left by a call that failed");
      break;
  }
}

AIErr Call::misbehaves(const std::string& what) {
  host.misbehaves(std::string("\"") + function_.suite.name + "\" " + function_.name + ": " + what);
  return badParameter();
}

// The plug-in manager's own suites have the code in lower case.
AIErr Call::badParameter() const {
  const bool manager = std::string_view(function_.suite.name).starts_with("SP ");
  return manager ? fourCC("Parm") : kBadParameterErr;
}

AIErr Call::badHandle(const char* name, const void* handle) {
  if (handle != nullptr) {
    return misbehaves(std::string(name) + " is not a valid handle");
  }
  if (host.options.nullHandles == NullHandles::refused) return badParameter();
  return misbehaves(std::string(name) + " is a null handle");
}

void Call::concerns(AIArtHandle art) {
  concernedPath_ = numberOf(art, HandleKind::path);
}

void Call::concernsNextPath() {
  concernedPath_ = host.documents.pathsMade() + 1;
}

std::optional<std::size_t> Call::concernedPath() const {
  const DocumentNode* document = host.documents.current();
  const std::size_t before = document == nullptr ? 0 : document->pathsBefore;
  if (concernedPath_ <= before) return std::nullopt;
  return concernedPath_ - before;
}

const Fault* Call::fault() {
  const Fault* first = nullptr;
  for (std::size_t i = 0; i < host.options.faults.size(); ++i) {
    const Fault& fault = host.options.faults[i];
    if (fault.suite != function_.suite.name || fault.function != function_.name) continue;
    const std::size_t call = ++host.faultCalls[i];
    if (first == nullptr && (fault.call == 0 || fault.call == call)) first = &fault;
  }
  return first;
}

void Call::finish(std::int32_t result, bool injected) {
  const bool done =
      !injected && !missingPointer_ && (function_.returns != Returns::code || result == kNoErr);
  if (done) {
    for (std::size_t i = 0; i < outCount_; ++i)
      record(outs_[i]);
  }
  if (!done && host.options.failedOuts == FailedOuts::filled) fillOuts();
  host.journal.end(entry_, result, injected, done ? std::nullopt : concernedPath());
}

}  // namespace embedded
