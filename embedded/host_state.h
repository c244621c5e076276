// The state of a host, on which the suites work.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "embedded/documents.h"
#include "embedded/host.h"
#include "embedded/store.h"
#include "hostapi/sp_basic_suite.h"

namespace embedded {

/// A suite's table as the plug-in gets it; slot n is the n-th pointer.
struct OfferedSuite {
  hostapi::SuiteId id{};  ///< with the version that is offered
  std::vector<hostapi::ReservedSlot> slots;
  std::size_t acquired = 0;  ///< acquisitions that were not released
};

/// The inside of a Unicode string.
struct HostString {
  std::u32string text;
  std::u16string units;  ///< what UTF_16 last gave out
};

/// The inside of a file path.
struct HostPath {
  std::u32string text;
};

/// A slot that is not offered but was called, under the name that the journal has for it.
struct UnofferedFunction {
  std::string name;
  Function function;
};

struct HostState {
  explicit HostState(Options wanted);

  Options options;
  Journal journal;
  Documents documents;
  Store<HostString, HandleKind::string> strings;
  Store<HostPath, HandleKind::filePath> paths;
  std::size_t messagePaths = 0;  ///< how many of the paths belong to messages
  std::map<void*, std::vector<std::max_align_t>> blocks;

  hostapi::SPBasicSuite basic{};
  std::vector<OfferedSuite> suites;
  std::deque<UnofferedFunction> unofferedCalls;
  std::vector<std::size_t> faultCalls;  ///< for each fault, how often its function was called

  std::string pluginName;
  std::size_t accessCount = 0;
  std::vector<Host::Format> formats;
  std::vector<Host::Notifier> notifiers;
  std::u32string libraryPath;

  std::vector<std::string> alerts;
  std::vector<std::string> misuse;
  std::vector<std::string> notes;

  void misbehaves(const std::string& what);
  void note(const std::string& text);
};

/// The host that is active in the process; throws std::logic_error when there is none.
HostState& activeHost();
/// Null when there is none.
HostState* activeHostIfAny();

}  // namespace embedded
