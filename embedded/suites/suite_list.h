// Every suite that the host offers, with the size of its table.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "hostapi/ai_art_set_suite.h"
#include "hostapi/ai_art_style_suite.h"
#include "hostapi/ai_art_suite.h"
#include "hostapi/ai_document_suite.h"
#include "hostapi/ai_file_format_suite.h"
#include "hostapi/ai_file_path_suite.h"
#include "hostapi/ai_layer_suite.h"
#include "hostapi/ai_notifier_suite.h"
#include "hostapi/ai_path_style_suite.h"
#include "hostapi/ai_path_suite.h"
#include "hostapi/ai_runtime_suite.h"
#include "hostapi/ai_tablet_data_suite.h"
#include "hostapi/ai_unicode_string_suite.h"
#include "hostapi/ai_user_suite.h"
#include "hostapi/sp_access_suite.h"
#include "hostapi/sp_plugins_suite.h"
#include "hostapi/uncalled_suites.h"

namespace embedded {

struct SuiteShape {
  hostapi::SuiteId id;
  std::size_t slots;
};

/// The tables of the suites that are acquired but never called are not known. If one of their first
/// `kUncalledSlots` slots is called, it is reported by its number, the others by one name.
inline constexpr std::size_t kUncalledSlots = 32;
inline constexpr std::size_t kUncalledTable = 256;

template <class Suite>
constexpr SuiteShape shapeOf() {
  return {Suite::kId, sizeof(Suite) / sizeof(hostapi::ReservedSlot)};
}

inline constexpr std::array kCalledSuites{
    shapeOf<hostapi::SPAccessSuite>(),     shapeOf<hostapi::SPPluginsSuite>(),
    shapeOf<hostapi::AINotifierSuite>(),   shapeOf<hostapi::AIUserSuite>(),
    shapeOf<hostapi::AIFilePathSuite>(),   shapeOf<hostapi::AIUnicodeStringSuite>(),
    shapeOf<hostapi::AIFileFormatSuite>(), shapeOf<hostapi::AIDocumentSuite>(),
    shapeOf<hostapi::AIArtSuite>(),        shapeOf<hostapi::AIPathSuite>(),
    shapeOf<hostapi::AIPathStyleSuite>(),  shapeOf<hostapi::AILayerSuite>(),
    shapeOf<hostapi::AITabletDataSuite>(), shapeOf<hostapi::AIArtStyleSuite>(),
    shapeOf<hostapi::AIRuntimeSuite>(),    shapeOf<hostapi::AIArtSetSuite>(),
};

inline constexpr std::array kUncalledSuites{
    hostapi::kContextSuite,           hostapi::kFoldersSuite,      hostapi::kBlocksSuite,
    hostapi::kTextFrameSuite,         hostapi::kMatchingArtSuite,  hostapi::kMdMemorySuite,
    hostapi::kApplicationSuite,       hostapi::kDocumentListSuite, hostapi::kRealBezierSuite,
    hostapi::kShapeConstructionSuite,
};

/// The place of a called suite in `kCalledSuites`.
constexpr std::size_t calledSuiteIndex(std::string_view name) {
  std::size_t index = 0;
  while (name != kCalledSuites.at(index).id.name)
    ++index;
  return index;
}

}  // namespace embedded
