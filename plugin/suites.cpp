#include "plugin/suites.h"

#include <algorithm>
#include <array>
#include <iterator>

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

using namespace hostapi;

namespace {

// One suite of the list: how it is requested and where its pointer goes.
struct Row {
  SuiteId id{};
  void (*keep)(const void* table) = nullptr;
  bool held = false;
};

template <class Suite>
constexpr Row called() {
  return {Suite::kId,
          [](const void* table) { heldSuite<Suite> = static_cast<const Suite*>(table); }};
}

constexpr Row uncalled(SuiteId id) {
  return {id, [](const void*) {}};
}

constexpr std::array kNamedRows{
    // the frame's
    called<SPAccessSuite>(),
    called<SPPluginsSuite>(),
    called<AINotifierSuite>(),
    uncalled(kContextSuite),
    called<AIUserSuite>(),
    called<AIFilePathSuite>(),
    uncalled(kFoldersSuite),
    // the plug-in's
    called<AIUnicodeStringSuite>(),
    uncalled(kBlocksSuite),
    called<AIFileFormatSuite>(),
    called<AIDocumentSuite>(),
    uncalled(kTextFrameSuite),
    called<AIArtSuite>(),
    called<AIPathSuite>(),
    uncalled(kMatchingArtSuite),
    uncalled(kMdMemorySuite),
    uncalled(kApplicationSuite),
    uncalled(kDocumentListSuite),
    called<AIPathStyleSuite>(),
    called<AILayerSuite>(),
    uncalled(kRealBezierSuite),
    called<AITabletDataSuite>(),
    called<AIArtStyleSuite>(),
    uncalled(kShapeConstructionSuite),
    called<AIRuntimeSuite>(),
    called<AIArtSetSuite>(),
};

constexpr auto allRows() {
  std::array<Row, kNamedRows.size() + std::size(kTextEngineSuites)> list;
  const auto textEngine = std::ranges::copy(kNamedRows, list.begin()).out;
  std::ranges::transform(kTextEngineSuites, textEngine, uncalled);
  return list;
}

// Built by the compiler: start-up allocates nothing for it.
// NOLINTNEXTLINE(cert-err58-cpp): so nothing is thrown before main either.
constinit auto rows = allRows();

int acquisitionCount = 0;

}  // namespace

SuitesHolder::SuitesHolder() {
  if (++acquisitionCount > 1) return;
  for (Row& row : rows) {
    const void* table = nullptr;
    row.held = basicSuite->AcquireSuite(row.id.name, row.id.version, &table) == kNoErr;
    row.keep(row.held ? table : nullptr);
  }
}

void SuitesHolder::release() {
  if (acquisitionCount == 0 || --acquisitionCount > 0) return;
  for (Row& row : rows) {
    if (row.held) basicSuite->ReleaseSuite(row.id.name, row.id.version);
    row.held = false;
    row.keep(nullptr);
  }
}

int SuitesHolder::acquisitions() {
  return acquisitionCount;
}
