#include "embedded/journal.h"

#include <algorithm>
#include <bit>
#include <utility>
#include <zlib.h>

#include "art/json_writer.h"
#include "embedded/handles.h"
#include "hostapi/codes.h"

namespace embedded {

namespace {

constexpr std::size_t kChecksumDigits = 8;

std::string hexadecimal(std::uint32_t number) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text(kChecksumDigits, '0');
  for (std::size_t i = 0; i < kChecksumDigits; ++i)
    text[kChecksumDigits - 1 - i] = kDigits[number >> (4 * i) & 0xFU];
  return text;
}

std::uint32_t checksumOf(const void* data, std::size_t size) {
  return static_cast<std::uint32_t>(crc32_z(0, static_cast<const Bytef*>(data), size));
}

bool endOfString(const Function& function, std::int32_t result) {
  return result == hostapi::kStringIndexErr && std::string_view(function.name) == "GetChar";
}

}  // namespace

std::string FailedCall::sentence() const {
  return '"' + suite + "\" " + function + " answered '" + hostapi::codeText(code) + '\'';
}

// ---- recording ----

std::size_t Journal::begin(const Function& function) {
  entries_.push_back({&function, static_cast<std::uint32_t>(arguments_.size()), 0, 0, false});
  return entries_.size() - 1;
}

void Journal::add(const char* name, Kind kind, std::uint64_t bits) {
  arguments_.push_back({name, bits, kind});
}

void Journal::addInteger(const char* name, std::int64_t value) {
  add(name, Kind::integer, static_cast<std::uint64_t>(value));
}

void Journal::addBoolean(const char* name, bool value) {
  add(name, Kind::boolean, value ? 1 : 0);
}

void Journal::addReal(const char* name, float value) {
  add(name, Kind::real, std::bit_cast<std::uint32_t>(value));
}

void Journal::addHandle(const char* name, const void* handle) {
  add(name, Kind::handle, std::bit_cast<std::uintptr_t>(handle));
}

void Journal::addText(const char* name, std::string text) {
  texts_.push_back(std::move(text));
  add(name, Kind::text, texts_.size() - 1);
}

void Journal::addArray(const char* name, const void* data, std::int64_t count, std::size_t size) {
  if (data == nullptr) {
    addNull(name);
    return;
  }
  Array array{count, std::nullopt};
  if (checksums_ && count >= 0) {
    array.checksum = checksumOf(data, static_cast<std::size_t>(count) * size);
  }
  arrays_.push_back(array);
  add(name, Kind::array, arrays_.size() - 1);
}

void Journal::addNull(const char* name) {
  add(name, Kind::null, 0);
}
void Journal::beginObject(const char* name) {
  add(name, Kind::objectBegin, 0);
}
void Journal::endObject() {
  add(nullptr, Kind::objectEnd, 0);
}

void Journal::setInteger(std::size_t argument, std::int64_t value) {
  arguments_[argument].kind = Kind::integer;
  arguments_[argument].bits = static_cast<std::uint64_t>(value);
}

void Journal::setBoolean(std::size_t argument, bool value) {
  arguments_[argument].kind = Kind::boolean;
  arguments_[argument].bits = value ? 1 : 0;
}

void Journal::setReal(std::size_t argument, float value) {
  arguments_[argument].kind = Kind::real;
  arguments_[argument].bits = std::bit_cast<std::uint32_t>(value);
}

void Journal::setHandle(std::size_t argument, const void* handle) {
  arguments_[argument].kind = Kind::handle;
  arguments_[argument].bits = std::bit_cast<std::uintptr_t>(handle);
}

void Journal::setText(std::size_t argument, std::string text) {
  texts_.push_back(std::move(text));
  arguments_[argument].kind = Kind::text;
  arguments_[argument].bits = texts_.size() - 1;
}

void Journal::end(std::size_t place, std::int32_t result, bool injected,
                  std::optional<std::size_t> path) {
  Entry& entry = entries_[place];
  entry.result = result;
  entry.injected = injected;
  entry.path = static_cast<std::uint32_t>(path.value_or(0));
}

// ---- asking ----

bool Journal::failed(const Entry& entry) const {
  if (entry.function->returns != Returns::code) return entry.injected;
  if (entry.result == hostapi::kNoErr) return false;
  return entry.injected || !endOfString(*entry.function, entry.result);
}

std::optional<FailedCall> Journal::firstFailure(std::size_t first) const {
  for (std::size_t i = first; i < entries_.size(); ++i) {
    const Entry& entry = entries_[i];
    if (!failed(entry)) continue;
    FailedCall call{entry.function->suite.name,
                    entry.function->name,
                    entry.result,
                    entry.injected,
                    std::nullopt,
                    i};
    if (entry.path != 0) call.path = entry.path;
    return call;
  }
  return std::nullopt;
}

std::size_t Journal::count(std::string_view suite, std::string_view function) const {
  return static_cast<std::size_t>(std::ranges::count_if(entries_, [&](const Entry& entry) {
    return suite == entry.function->suite.name && function == entry.function->name;
  }));
}

std::size_t Journal::endOfArguments(std::size_t entry) const {
  return entry + 1 < entries_.size() ? entries_[entry + 1].firstArgument : arguments_.size();
}

// ---- writing ----

class JournalText {
 public:
  JournalText(std::string& out, const Journal& journal) : json_(out), journal_(journal) {}

  void write(std::size_t index) {
    const Journal::Entry& entry = journal_.entries_[index];
    json_.beginObject().member("suite", entry.function->suite.name);
    json_.member("version", entry.function->suite.version);
    json_.member("function", entry.function->name).key("arguments").beginObject();
    for (std::size_t i = entry.firstArgument; i < journal_.endOfArguments(index); ++i)
      writeArgument(journal_.arguments_[i]);
    json_.endObject().key("result");
    if (entry.function->returns == Returns::nothing) {
      json_.null();
    } else {
      json_.value(entry.result);
    }
    json_.endObject();
  }

 private:
  void writeArgument(const Journal::Argument& argument) {
    if (argument.kind == Journal::Kind::objectEnd) {
      json_.endObject();
      return;
    }
    json_.key(argument.name);
    switch (argument.kind) {
      case Journal::Kind::integer:
        json_.value(static_cast<std::int64_t>(argument.bits));
        break;
      case Journal::Kind::boolean:
        json_.value(argument.bits != 0);
        break;
      case Journal::Kind::real:
        json_.value(std::bit_cast<float>(static_cast<std::uint32_t>(argument.bits)));
        break;
      case Journal::Kind::handle:
        writeHandle(std::bit_cast<const void*>(static_cast<std::uintptr_t>(argument.bits)));
        break;
      case Journal::Kind::text:
        json_.value(journal_.texts_[static_cast<std::size_t>(argument.bits)]);
        break;
      case Journal::Kind::array:
        writeArray(journal_.arrays_[static_cast<std::size_t>(argument.bits)]);
        break;
      case Journal::Kind::objectBegin:
        json_.beginObject();
        break;
      case Journal::Kind::null:
      case Journal::Kind::objectEnd:
        json_.null();
        break;
    }
  }

  void writeHandle(const void* handle) {
    const std::string name = handleName(handle);
    if (handle == nullptr) {
      json_.null();
    } else {
      json_.value(name.empty() ? "unknown" : name);
    }
  }

  void writeArray(const Journal::Array& array) {
    json_.beginObject().member("length", array.length).key("checksum");
    if (array.checksum) {
      json_.value(hexadecimal(*array.checksum));
    } else {
      json_.null();
    }
    json_.endObject();
  }

  art::JsonWriter json_;
  const Journal& journal_;
};

std::string Journal::jsonLines(std::size_t first, std::size_t last) const {
  std::string out;
  for (std::size_t i = first; i < std::min(last, entries_.size()); ++i) {
    if (!entries_[i].function->written) continue;
    JournalText(out, *this).write(i);
    out += '\n';
  }
  return out;
}

}  // namespace embedded
