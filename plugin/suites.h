// The host's suites as the plug-in holds them, and the only way in which it calls them.
#pragma once

#include <concepts>
#include <tuple>
#include <type_traits>

#include "hostapi/codes.h"
#include "hostapi/sp_basic_suite.h"
#include "hostapi/types.h"

/// The basic suite of the message being handled.
inline const hostapi::SPBasicSuite* basicSuite = nullptr;

/// A suite of the plug-in's list while it is held; null when the host did not provide it.
template <class Suite>
inline const Suite* heldSuite = nullptr;

/// A function of a held suite; null when the suite or the function is missing.
template <class Suite, class Function>
Function heldFunction(Function Suite::*function) {
  const Suite* suite = heldSuite<Suite>;
  return suite == nullptr ? nullptr : suite->*function;
}

template <class Argument>
constexpr bool isNullHandle(Argument argument) {
  if constexpr (hostapi::Handle<Argument>) return argument == nullptr;
  return false;
}

/// What a call gives back through a pointer.
template <class T>
concept CallResult = !std::is_const_v<T> && (std::integral<T> || hostapi::Handle<T>);

/// An argument of a call. If it points to a number or a handle that the call gives back, it
/// remembers the value before the call.
template <class Argument>
class CallArgument {
 public:
  explicit CallArgument(Argument) {}
  void restore() const {}
};

template <CallResult Result>
class CallArgument<Result*> {
 public:
  explicit CallArgument(Result* place) : place_(place), before_(*place) {}
  void restore() const { *place_ = before_; }

 private:
  Result* place_;
  Result before_;
};

/// Calls a function of a held suite, for example call(&AILayerSuite::CountLayers, &count).
///
/// 1. When the suite or the function is missing, the answer is 'S!Fd' and nothing is called.
/// 2. When a handle is null, the answer is 'PARM' and the host is not called. A literal `nullptr`
///    is passed on; to the host it means "none".
/// 3. When the host answers with a code, the numbers and handles that it gives back are restored to
///    their values before the call: what a failed call leaves in them is not known.
template <class Suite, class... Parameters, class... Arguments>
hostapi::AIErr call(hostapi::AIErr (*Suite::*function)(Parameters...), Arguments... arguments) {
  const auto held = heldFunction(function);
  if (held == nullptr) return hostapi::kSuiteNotFoundErr;
  if ((isNullHandle(arguments) || ...)) return hostapi::kBadParameterErr;
  const std::tuple before(CallArgument<Arguments>{arguments}...);
  const hostapi::AIErr code = held(arguments...);
  if (code != hostapi::kNoErr) {
    std::apply([](const auto&... argument) { (argument.restore(), ...); }, before);
  }
  return code;
}

/// The same for the few functions without a result.
template <class Suite, class... Parameters, class... Arguments>
void call(void (*Suite::*function)(Parameters...), Arguments... arguments) {
  if (const auto held = heldFunction(function)) held(arguments...);
}

/// Acquires every suite of the list, the frame's first, then the plug-in's own. A suite that the
/// host does not have stays null. Only the first of several acquisitions asks the host; destroying
/// the holder releases nothing.
class SuitesHolder {
 public:
  SuitesHolder();

  /// Undoes one acquisition; the last one releases every suite once, in the order in which they
  /// were acquired, and clears the pointers.
  static void release();

  static int acquisitions();
};

/// A suite acquired for the duration of one call, whether or not the plug-in holds it already; null
/// when the host does not provide it.
template <class Suite>
class BorrowedSuite {
 public:
  BorrowedSuite() : held_(heldSuite<Suite>) {
    const void* table = nullptr;
    const hostapi::SuiteId id = Suite::kId;
    borrowed_ = basicSuite->AcquireSuite(id.name, id.version, &table) == hostapi::kNoErr;
    heldSuite<Suite> = borrowed_ ? static_cast<const Suite*>(table) : nullptr;
  }
  ~BorrowedSuite() {
    heldSuite<Suite> = held_;
    if (borrowed_) basicSuite->ReleaseSuite(Suite::kId.name, Suite::kId.version);
  }
  BorrowedSuite(const BorrowedSuite&) = delete;
  BorrowedSuite& operator=(const BorrowedSuite&) = delete;

 private:
  const Suite* held_;
  bool borrowed_ = false;
};
