// A record of every call that a plug-in makes on the host's suites, in order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hostapi/types.h"

namespace embedded {

/// What a suite's function returns.
enum class Returns { code, value, nothing };

/// A function of a suite, as the journal names it. Must outlive the journal.
struct Function {
  hostapi::SuiteId suite;
  const char* name;
  Returns returns = Returns::code;
  bool written = true;  ///< false for the string and path suites: recorded but not written
};

/// A call that the host answered with a code other than 0.
struct FailedCall {
  std::string suite;
  std::string function;
  hostapi::AIErr code = 0;
  bool injected = false;  ///< the answer was a `Fault`, not the host's own
  /// The path that was being made, counted from 1 within the document; none when the call did not
  /// concern a path.
  std::optional<std::size_t> path;
  std::size_t call = 0;  ///< its place in the journal, from 0

  /// The call and its code in words: "AI Path Suite" SetPathSegmentCount answered 'SEGM'.
  std::string sentence() const;
};

/// The calls of one host. They are recorded as numbers and written as text only on request.
class Journal {
 public:
  enum class Kind : std::uint8_t {
    integer,
    boolean,
    real,
    handle,
    text,
    array,
    null,
    objectBegin,
    objectEnd,
  };

  explicit Journal(bool checksums = true) : checksums_(checksums) {}

  std::size_t size() const { return entries_.size(); }

  /// The calls from `first` up to `last`, one line of JSON each:
  ///
  ///     {"suite":"AI Art Suite","version":16,"function":"NewArt",
  ///      "arguments":{"type":2,"paintOrder":3,"reference":"group:1","art":"path:1"},"result":0}
  ///
  /// Handles by name ("layer:1", "group:1", "path:3", null), long arrays as
  /// {"length":n,"checksum":8 hexadecimal digits of the CRC-32 of their bytes in memory}, out
  /// parameters as the value given back, or null when the call failed.
  std::string jsonLines(std::size_t first = 0, std::size_t last = hostapi::kNpos) const;

  /// The first call from `first` on that was answered with a code; GetChar reaching the end of a
  /// string does not count.
  std::optional<FailedCall> firstFailure(std::size_t first = 0) const;

  /// How often a function was called.
  std::size_t count(std::string_view suite, std::string_view function) const;

  // ---- recording, for the suites ----

  /// Returns the place of the call, to be passed to `end`: other calls may come in between.
  std::size_t begin(const Function& function);
  void addInteger(const char* name, std::int64_t value);
  void addBoolean(const char* name, bool value);
  void addReal(const char* name, float value);
  void addHandle(const char* name, const void* handle);
  void addText(const char* name, std::string text);
  /// `count` elements of `size` bytes each; not read when `data` is null or `count` negative.
  void addArray(const char* name, const void* data, std::int64_t count, std::size_t size);
  void addNull(const char* name);
  /// Removes the argument added last, so that its final value can be added instead.
  void removeLast() { arguments_.pop_back(); }
  void beginObject(const char* name);
  void endObject();
  /// Place of the argument added last, for the setters below once its value is known.
  std::size_t lastArgument() const { return arguments_.size() - 1; }
  void setInteger(std::size_t argument, std::int64_t value);
  void setBoolean(std::size_t argument, bool value);
  void setReal(std::size_t argument, float value);
  void setHandle(std::size_t argument, const void* handle);
  void setText(std::size_t argument, std::string text);
  void end(std::size_t place, std::int32_t result, bool injected, std::optional<std::size_t> path);

 private:
  struct Entry {
    const Function* function;
    std::uint32_t firstArgument;
    std::uint32_t path;  ///< 0: none
    std::int32_t result;
    bool injected;
  };
  struct Argument {
    const char* name;
    std::uint64_t bits;  ///< number, handle, or index into texts_ or arrays_
    Kind kind;
  };
  struct Array {
    std::int64_t length;
    std::optional<std::uint32_t> checksum;
  };

  void add(const char* name, Kind kind, std::uint64_t bits);
  std::size_t endOfArguments(std::size_t entry) const;
  bool failed(const Entry& entry) const;

  bool checksums_;
  std::vector<Entry> entries_;
  std::vector<Argument> arguments_;
  std::vector<std::string> texts_;
  std::vector<Array> arrays_;

  friend class JournalText;
};

}  // namespace embedded
