// The plug-in manager's suites: SP Basic 4, SP Access 3, SP Plug-ins 4.
#include <algorithm>
#include <limits>

#include "embedded/suites/call.h"
#include "embedded/suites/tables.h"

namespace embedded {

using namespace hostapi;

namespace {

constexpr SuiteId kBasicSuite{"SP Basic Suite", 4};
constexpr std::size_t kLargestBlock = std::numeric_limits<std::int32_t>::max();

constexpr Function kAcquireSuite{kBasicSuite, "AcquireSuite"};
constexpr Function kReleaseSuite{kBasicSuite, "ReleaseSuite"};
constexpr Function kIsEqual{kBasicSuite, "IsEqual", Returns::value};
constexpr Function kAllocateBlock{kBasicSuite, "AllocateBlock"};
constexpr Function kFreeBlock{kBasicSuite, "FreeBlock"};
constexpr Function kReallocateBlock{kBasicSuite, "ReallocateBlock"};
constexpr Function kUndefined{kBasicSuite, "Undefined"};
constexpr Function kAcquirePlugin{SPAccessSuite::kId, "AcquirePlugin"};
constexpr Function kReleasePlugin{SPAccessSuite::kId, "ReleasePlugin"};
constexpr Function kGetPluginName{SPPluginsSuite::kId, "GetPluginName"};

// ---- SP Basic ----

OfferedSuite* findSuite(HostState& host, const std::string& name, std::int32_t version) {
  const auto found = std::ranges::find_if(host.suites, [&](const OfferedSuite& suite) {
    return name == suite.id.name && version == suite.id.version;
  });
  return found == host.suites.end() ? nullptr : &*found;
}

SPErr acquireSuite(const char* name, std::int32_t version, const void** suite) {
  return answer(
      kAcquireSuite,
      [&](Call& call) {
        call.inText("name", name);
        call.in("version", version);
        call.required("suite", suite);
      },
      [&](Call& call) {
        OfferedSuite* offered = findSuite(call.host, name, version);
        if (offered == nullptr) return kSuiteNotFoundErr;
        ++offered->acquired;
        *suite = offered->slots.data();
        return kNoErr;
      });
}

SPErr releaseSuite(const char* name, std::int32_t version) {
  return answer(
      kReleaseSuite,
      [&](Call& call) {
        call.inText("name", name);
        call.in("version", version);
      },
      [&](Call& call) {
        OfferedSuite* offered = findSuite(call.host, name, version);
        if (offered == nullptr || offered->acquired == 0) {
          return call.misbehaves(std::string("\"") + name + "\" " + std::to_string(version) +
                                 " was not acquired");
        }
        --offered->acquired;
        return kNoErr;
      });
}

SPBoolean isEqual(const char* a, const char* b) {
  return answer(
      kIsEqual,
      [&](Call& call) {
        call.inText("a", a);
        call.inText("b", b);
      },
      [&](Call&) { return std::string_view(a) == b ? 1 : 0; });
}

// Blocks are aligned for every type; even one of size 0 has an address.
std::vector<std::max_align_t> makeBlock(std::size_t size) {
  return std::vector<std::max_align_t>(size / sizeof(std::max_align_t) + 1);
}

void* keep(HostState& host, std::vector<std::max_align_t> block) {
  void* address = block.data();
  host.blocks.emplace(address, std::move(block));
  return address;
}

SPErr allocateBlock(std::size_t size, void** block) {
  return answer(
      kAllocateBlock,
      [&](Call& call) {
        call.in("size", static_cast<std::int64_t>(size));
        call.required("block", block);
      },
      [&](Call& call) {
        if (size > kLargestBlock) return kOutOfMemoryErr;
        *block = keep(call.host, makeBlock(size));
        return kNoErr;
      });
}

SPErr freeBlock(void* block) {
  return answer(
      kFreeBlock, [](Call&) {},
      [&](Call& call) {
        if (block == nullptr || call.host.blocks.erase(block) == 1) return kNoErr;
        return call.misbehaves("block was not allocated, or was already freed");
      });
}

SPErr reallocateBlock(void* block, std::size_t size, void** newBlock) {
  return answer(
      kReallocateBlock,
      [&](Call& call) {
        call.in("size", static_cast<std::int64_t>(size));
        call.required("newBlock", newBlock);
      },
      [&](Call& call) {
        const auto old = call.host.blocks.find(block);
        if (block != nullptr && old == call.host.blocks.end()) {
          return call.misbehaves("block was not allocated, or was already freed");
        }
        if (size > kLargestBlock) return kOutOfMemoryErr;
        std::vector<std::max_align_t> made = makeBlock(size);
        if (block != nullptr) {
          std::copy_n(old->second.begin(), std::min(old->second.size(), made.size()), made.begin());
          call.host.blocks.erase(old);
        }
        *newBlock = keep(call.host, std::move(made));
        return kNoErr;
      });
}

SPErr undefined() {
  return answer(
      kUndefined, [](Call&) {},
      [](Call& call) {
        call.misbehaves("it stands in for missing functions and must not be called");
        return kNotImplementedErr;
      });
}

// ---- SP Access, SP Plug-ins ----

bool isOwnReference(const void* plugin) {
  return numberOf(plugin, HandleKind::plugin) == 1;
}

SPErr acquirePlugin(SPPluginRef plugin, SPAccessRef* access) {
  return answer(
      kAcquirePlugin,
      [&](Call& call) {
        call.inHandle("plugin", plugin);
        call.outHandle("access", access);
      },
      [&](Call& call) {
        if (!isOwnReference(plugin)) return call.badHandle("plugin", plugin);
        ++call.host.accessCount;
        *access = toHandle<SPAccessRef>(HandleKind::access, 1);
        return kNoErr;
      });
}

SPErr releasePlugin(SPAccessRef access) {
  return answer(
      kReleasePlugin, [&](Call& call) { call.inHandle("access", access); },
      [&](Call& call) {
        if (numberOf(access, HandleKind::access) != 1) return call.badHandle("access", access);
        if (call.host.accessCount == 0) return call.misbehaves("access was already released");
        --call.host.accessCount;
        return kNoErr;
      });
}

SPErr getPluginName(SPPluginRef plugin, const char** name) {
  return answer(
      kGetPluginName,
      [&](Call& call) {
        call.inHandle("plugin", plugin);
        call.outText("name", name);
      },
      [&](Call& call) {
        if (!isOwnReference(plugin)) return call.badHandle("plugin", plugin);
        *name = call.host.pluginName.c_str();
        return kNoErr;
      });
}

}  // namespace

SPBasicSuite basicTable() {
  return {.AcquireSuite = acquireSuite,
          .ReleaseSuite = releaseSuite,
          .IsEqual = isEqual,
          .AllocateBlock = allocateBlock,
          .FreeBlock = freeBlock,
          .ReallocateBlock = reallocateBlock,
          .Undefined = undefined};
}

SPAccessSuite accessTable() {
  auto table = tableOfMisuse<SPAccessSuite>();
  table.AcquirePlugin = acquirePlugin;
  table.ReleasePlugin = releasePlugin;
  return table;
}

SPPluginsSuite pluginsTable() {
  auto table = tableOfMisuse<SPPluginsSuite>();
  table.GetPluginName = getPluginName;
  return table;
}

}  // namespace embedded
