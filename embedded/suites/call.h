// One call of a suite's function: recorded, checked and carried out, or failed by fault injection.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <string>
#include <type_traits>

#include "embedded/host_state.h"
#include "embedded/journal.h"
#include "hostapi/codes.h"
#include "hostapi/types.h"

namespace embedded {

/// A call and its arguments. Each `in` records a value; each `out` records the value given back
/// when the call has succeeded, or null when it failed. If a pointer that must not be null is null,
/// the call answers 'PARM' and is reported as misuse.
class Call {
 public:
  Call(HostState& state, const Function& function)
      : host(state), function_(function), entry_(host.journal.begin(function)) {}

  HostState& host;

  void in(const char* name, std::int64_t value) { host.journal.addInteger(name, value); }
  void inBoolean(const char* name, std::int64_t value) {
    host.journal.addBoolean(name, value != 0);
  }
  void inHandle(const char* name, const void* handle) { host.journal.addHandle(name, handle); }
  void inText(const char* name, const char* text);
  /// A body with a null inside is the empty text; the address of the body must not be null.
  void inString(const char* name, const hostapi::UnicodeStringBody* string);
  /// Recorded as the path's last name.
  void inPath(const char* name, const hostapi::FilePathBody* path);

  void out(const char* name, std::int16_t* place) { addOut(name, place, OutKind::integer16); }
  void out(const char* name, std::int32_t* place) { addOut(name, place, OutKind::integer); }
  void outBoolean(const char* name, hostapi::AIBoolean* place) {
    addOut(name, place, OutKind::boolean);
  }
  /// The first 32 bits of an out parameter that may be wider.
  void outLow32(const char* name, void* place) { addOut(name, place, OutKind::integer); }
  template <class Handle>
  void outHandle(const char* name, Handle* place) {
    addOut(name, place, OutKind::handle);
  }
  template <class Handle>
  void outHandleOrNull(const char* name, Handle* place) {
    if (place == nullptr) {
      host.journal.addNull(name);
    } else {
      addOut(name, place, OutKind::handle);
    }
  }
  void outText(const char* name, const char** place) { addOut(name, place, OutKind::text); }
  /// A pointer that must not be null; it is not recorded.
  void required(const char* name, const void* pointer);

  /// 'PARM', or 'Parm' in the plug-in manager's own suites.
  hostapi::AIErr badParameter() const;
  /// Reports what the plug-in did wrong and returns `badParameter`.
  hostapi::AIErr misbehaves(const std::string& what);
  /// For an invalid handle: reports it as misuse and returns `badParameter`. A null handle is
  /// reported only if the options ask for it, since a call that the host refuses leaves null
  /// behind.
  hostapi::AIErr badHandle(const char* name, const void* handle);

  // For answer().
  const Fault* fault();
  bool missingPointer() const { return missingPointer_; }
  void finish(std::int32_t result, bool injected);

 private:
  enum class OutKind : std::uint8_t { integer16, integer, boolean, handle, text };
  struct Out {
    void* place;
    std::size_t argument;
    OutKind kind;
  };
  static constexpr std::size_t kMostOuts = 3;

  void addOut(const char* name, void* place, OutKind kind);
  void record(const Out& out);
  void fillOuts();
  static void fill(const Out& out);
  std::optional<std::size_t> concernedPath() const;

  const Function& function_;
  std::size_t entry_;  ///< of the journal
  std::array<Out, kMostOuts> outs_{};
  std::size_t outCount_ = 0;
  std::size_t concernedPath_ = 0;
  bool missingPointer_ = false;

 public:
  /// The call concerns this path; the journal keeps it if the call fails.
  void concerns(hostapi::AIArtHandle art);
  void concernsNextPath();
};

/// Tells whoever asked for it that the host is at work.
class AtWork {
 public:
  explicit AtWork(const Options& options) : options_(options) { tell(true); }
  ~AtWork() { tell(false); }
  AtWork(const AtWork&) = delete;
  AtWork& operator=(const AtWork&) = delete;

 private:
  void tell(bool begins) const {
    if (options_.atBorder) options_.atBorder(begins);
  }

  const Options& options_;
};

/// Answers a call: `describe(call)` records its arguments, `carryOut(call)` performs it and returns
/// the code. It is not performed if a fault takes its place or a required pointer is null.
/// Exceptions become codes: '!MEM' when memory runs out, 'CANT' for any other.
template <class Describe, class CarryOut>
std::int32_t answer(const Function& function, Describe describe, CarryOut carryOut) noexcept {
  try {
    HostState& host = activeHost();
    const AtWork atWork(host.options);
    Call call(host, function);
    describe(call);
    const Fault* fault = call.fault();
    std::int32_t result = call.badParameter();
    const bool isCarriedOut = fault == nullptr || fault->moment == FaultMoment::afterwards;
    if (isCarriedOut && !call.missingPointer()) result = carryOut(call);
    if (fault != nullptr) result = fault->code;
    call.finish(result, fault != nullptr);
    return result;
  } catch (const std::bad_alloc&) {
    return hostapi::kOutOfMemoryErr;
  } catch (...) {
    return hostapi::kCantHappenErr;
  }
}

}  // namespace embedded
