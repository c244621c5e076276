#include "embedded/suites/registry.h"

#include <utility>

#include "embedded/suites/tables.h"

namespace embedded {

using namespace hostapi;

namespace {

void setNullSlots(std::vector<ReservedSlot>& slots, std::string_view suite,
                  const Options& options) {
  for (const NullSlot& null : options.nullSlots)
    if (null.suite == suite && null.slot < slots.size()) slots[null.slot] = nullptr;
}

class Registry {
 public:
  explicit Registry(const Options& options) : options_(options) {}

  void add(SuiteId id, std::vector<ReservedSlot> slots) {
    if (options_.lackingSuites.contains(id.name)) return;
    const auto version = options_.suiteVersions.find(id.name);
    if (version != options_.suiteVersions.end()) id.version = version->second;
    setNullSlots(slots, id.name, options_);
    suites_.push_back({id, std::move(slots)});
  }

  template <class Suite>
  void add(const Suite& table) {
    add(Suite::kId, slotsOf(table));
  }

  std::vector<OfferedSuite> take() { return std::move(suites_); }

 private:
  const Options& options_;
  std::vector<OfferedSuite> suites_;
};

void addCalled(Registry& registry, const Options& options) {
  registry.add(accessTable());
  registry.add(pluginsTable());
  registry.add(notifierTable());
  registry.add(userTable());
  registry.add(filePathTable());
  registry.add(AIUnicodeStringSuite::kId, unicodeStringSlots(options.unicodeStringLayout));
  registry.add(fileFormatTable());
  registry.add(documentTable(options.documentLayout));
  registry.add(artTable());
  registry.add(pathTable());
  registry.add(pathStyleTable());
  registry.add(layerTable());
  registry.add(tabletDataTable());
  registry.add(artStyleTable());
  registry.add(runtimeTable());
  registry.add(artSetTable());
}

}  // namespace

std::vector<OfferedSuite> makeSuites(const Options& options) {
  Registry registry(options);
  addCalled(registry, options);
  for (std::size_t i = 0; i < kUncalledSuites.size(); ++i)
    registry.add(kUncalledSuites.at(i), uncalledSlots(i));
  for (std::size_t i = 0; i < std::size(kTextEngineSuites); ++i)
    registry.add(kTextEngineSuites[i], textEngineSlots(i));
  return registry.take();
}

SPBasicSuite makeBasicSuite(const Options& options) {
  std::vector<ReservedSlot> slots = slotsOf(basicTable());
  setNullSlots(slots, "SP Basic Suite", options);
  SPBasicSuite table{};
  std::memcpy(static_cast<void*>(&table), slots.data(), sizeof table);
  return table;
}

}  // namespace embedded
