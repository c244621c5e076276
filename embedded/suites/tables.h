// The tables of the suites, one function for each, and what fills the slots that are not offered.
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

#include "embedded/options.h"
#include "embedded/suites/suite_list.h"
#include "hostapi/sp_basic_suite.h"

namespace embedded {

template <class Result, class... Parameters>
hostapi::ReservedSlot asSlot(Result (*function)(Parameters...)) {
  return reinterpret_cast<hostapi::ReservedSlot>(function);
}

/// Reports the call as misuse, records it and returns '!IMP'. `slot` counts from 0.
hostapi::AIErr calledUnofferedSlot(const hostapi::SuiteId& suite, std::size_t slot) noexcept;

/// Fills a slot of a called suite that is not offered.
template <std::size_t suite, std::size_t slot>
hostapi::AIErr unofferedSlot() {
  return calledUnofferedSlot(kCalledSuites[suite].id, slot);
}

template <std::size_t suite, std::size_t... slot>
constexpr auto unofferedSlots(std::index_sequence<slot...>) {
  using Unoffered = hostapi::AIErr (*)();
  return std::array<Unoffered, sizeof...(slot)>{&unofferedSlot<suite, slot>...};
}

/// A table in which calling any slot is misuse.
template <class Suite>
Suite tableOfMisuse() {
  constexpr std::size_t kIndex = calledSuiteIndex(Suite::kId.name);
  constexpr auto kSlots =
      unofferedSlots<kIndex>(std::make_index_sequence<kCalledSuites[kIndex].slots>());
  static_assert(sizeof kSlots == sizeof(Suite));
  Suite table;
  std::memcpy(static_cast<void*>(&table), kSlots.data(), sizeof table);
  return table;
}

template <class Suite>
std::vector<hostapi::ReservedSlot> slotsOf(const Suite& table) {
  std::vector<hostapi::ReservedSlot> slots(sizeof(Suite) / sizeof(hostapi::ReservedSlot));
  std::memcpy(static_cast<void*>(slots.data()), &table, sizeof table);
  return slots;
}

/// The table of the uncalled suite at `index` of kUncalledSuites, and of the text engine's.
std::vector<hostapi::ReservedSlot> uncalledSlots(std::size_t index);
std::vector<hostapi::ReservedSlot> textEngineSlots(std::size_t index);

hostapi::SPBasicSuite basicTable();
hostapi::SPAccessSuite accessTable();
hostapi::SPPluginsSuite pluginsTable();
hostapi::AINotifierSuite notifierTable();
hostapi::AIUserSuite userTable();
hostapi::AIFilePathSuite filePathTable();
std::vector<hostapi::ReservedSlot> unicodeStringSlots(UnicodeStringLayout layout);
hostapi::AIFileFormatSuite fileFormatTable();
hostapi::AIDocumentSuite documentTable(DocumentLayout layout);
hostapi::AIArtSuite artTable();
hostapi::AIPathSuite pathTable();
hostapi::AIPathStyleSuite pathStyleTable();
hostapi::AILayerSuite layerTable();
hostapi::AITabletDataSuite tabletDataTable();
hostapi::AIArtStyleSuite artStyleTable();
hostapi::AIRuntimeSuite runtimeTable();
hostapi::AIArtSetSuite artSetTable();

}  // namespace embedded
