// What answers when a slot that is not offered is called.
#include <string>

#include "embedded/host_state.h"
#include "embedded/suites/tables.h"
#include "hostapi/codes.h"

namespace embedded {

using namespace hostapi;

namespace {

using Unoffered = AIErr (*)();

std::string nameOf(std::size_t slot) {
  if (slot == kUncalledTable) return "slot " + std::to_string(kUncalledSlots) + " or a later one";
  return "slot " + std::to_string(slot);
}

void recordUnoffered(HostState& host, const SuiteId& suite, const std::string& name) {
  host.misbehaves("called " + name + " of \"" + suite.name + '"');
  UnofferedFunction& call = host.unofferedCalls.emplace_back();
  call.name = name;
  call.function = {.suite = suite, .name = call.name.c_str()};
  const std::size_t place = host.journal.begin(call.function);
  host.journal.end(place, kNotImplementedErr, false, std::nullopt);
}

template <std::size_t suite, std::size_t slot>
AIErr uncalledSlot() {
  return calledUnofferedSlot(kUncalledSuites[suite], slot);
}

template <std::size_t suite, std::size_t slot>
AIErr textEngineSlot() {
  return calledUnofferedSlot(kTextEngineSuites[suite], slot);
}

// A table of kUncalledTable slots: the first ones as given, all others `rest`.
std::vector<ReservedSlot> tableOf(const std::array<Unoffered, kUncalledSlots>& first,
                                  Unoffered rest) {
  std::vector<ReservedSlot> slots(kUncalledTable, asSlot(rest));
  for (std::size_t i = 0; i < first.size(); ++i)
    slots[i] = asSlot(first[i]);
  return slots;
}

template <std::size_t suite, std::size_t... slot>
std::vector<ReservedSlot> uncalledTable(std::index_sequence<slot...>) {
  return tableOf({&uncalledSlot<suite, slot>...}, &uncalledSlot<suite, kUncalledTable>);
}

template <std::size_t suite, std::size_t... slot>
std::vector<ReservedSlot> textEngineTable(std::index_sequence<slot...>) {
  return tableOf({&textEngineSlot<suite, slot>...}, &textEngineSlot<suite, kUncalledTable>);
}

using MakeTable = std::vector<ReservedSlot> (*)(std::make_index_sequence<kUncalledSlots>);

template <std::size_t... suite>
constexpr auto uncalledMakers(std::index_sequence<suite...>) {
  return std::array<MakeTable, sizeof...(suite)>{&uncalledTable<suite>...};
}

template <std::size_t... suite>
constexpr auto textEngineMakers(std::index_sequence<suite...>) {
  return std::array<MakeTable, sizeof...(suite)>{&textEngineTable<suite>...};
}

constexpr auto kUncalledMakers = uncalledMakers(std::make_index_sequence<kUncalledSuites.size()>());
constexpr auto kTextEngineMakers =
    textEngineMakers(std::make_index_sequence<std::size(kTextEngineSuites)>());

}  // namespace

AIErr calledUnofferedSlot(const SuiteId& suite, std::size_t slot) noexcept {
  try {
    recordUnoffered(activeHost(), suite, nameOf(slot));
    return kNotImplementedErr;
  } catch (...) {
    return kOutOfMemoryErr;
  }
}

std::vector<ReservedSlot> uncalledSlots(std::size_t index) {
  return kUncalledMakers.at(index)(std::make_index_sequence<kUncalledSlots>());
}

std::vector<ReservedSlot> textEngineSlots(std::size_t index) {
  return kTextEngineMakers.at(index)(std::make_index_sequence<kUncalledSlots>());
}

}  // namespace embedded
