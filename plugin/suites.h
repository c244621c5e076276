// The host's suites as the plug-in holds them, and the only way in which it calls them.
#pragma once

#include "hostapi/codes.h"
#include "hostapi/sp_basic_suite.h"
#include "hostapi/types.h"

/// The basic suite of the message being handled.
inline const hostapi::SPBasicSuite* basicSuite = nullptr;

/// A suite of the plug-in's list while it is held; null when the host did not give it.
template <class Suite>
inline const Suite* heldSuite = nullptr;

/// Calls a function of a held suite, for example call(&AILayerSuite::CountLayers, &count). Answers
/// 'S!Fd' in the host's place when the suite or the function is missing: no call goes through null.
template <class Suite, class... Parameters, class... Arguments>
hostapi::AIErr call(hostapi::AIErr (*Suite::*function)(Parameters...), Arguments... arguments) {
  const Suite* suite = heldSuite<Suite>;
  if (suite == nullptr || suite->*function == nullptr) return hostapi::kSuiteNotFoundErr;
  return (suite->*function)(arguments...);
}

/// The same for the few functions that answer nothing.
template <class Suite, class... Parameters, class... Arguments>
void call(void (*Suite::*function)(Parameters...), Arguments... arguments) {
  const Suite* suite = heldSuite<Suite>;
  if (suite != nullptr && suite->*function != nullptr) (suite->*function)(arguments...);
}

/// Acquires every suite of the list, the frame's first, then the plug-in's own. A suite that the
/// host does not have stays null. Only the first of several acquisitions asks the host; dropping
/// the holder gives nothing back.
class SuitesHolder {
 public:
  SuitesHolder();

  /// Undoes one acquisition; the last one gives every suite back once, in the order in which they
  /// were acquired, and clears the pointers.
  static void release();

  static int acquisitions();
};

/// A suite acquired for the length of one call, whether or not the plug-in holds it besides; null
/// while the host does not give it.
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
