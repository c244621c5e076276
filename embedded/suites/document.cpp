// Document 13: the page.
#include <cmath>

#include "embedded/suites/call.h"
#include "embedded/suites/tables.h"

namespace embedded {

using namespace hostapi;

namespace {

constexpr Function kSetDocumentRulerOrigin{AIDocumentSuite::kId, "SetDocumentRulerOrigin"};
constexpr Function kGetDocumentSetup{AIDocumentSuite::kId, "GetDocumentSetup"};
constexpr Function kSetDocumentSetup{AIDocumentSuite::kId, "SetDocumentSetup"};
constexpr Function kGetAIVersion{AIDocumentSuite::kId, "GetAIVersion", Returns::value};
constexpr Function kGetDocumentTargeting{AIDocumentSuite::kId, "GetDocumentTargeting"};

AIErr setDocumentRulerOrigin(const AIRealPoint* origin) {
  return answer(
      kSetDocumentRulerOrigin,
      [&](Call& call) {
        call.required("origin", origin);
        if (origin == nullptr) return;
        call.host.journal.beginObject("origin");
        call.host.journal.addReal("h", origin->h);
        call.host.journal.addReal("v", origin->v);
        call.host.journal.endObject();
      },
      [&](Call& call) {
        DocumentNode* document = call.host.documents.current();
        if (document == nullptr) return kNoDocumentErr;
        document->rulerOrigin = {origin->h, origin->v};
        return kNoErr;
      });
}

void describeSetup(Journal& journal, const AIDocumentSetup& setup) {
  journal.beginObject("setup");
  journal.addReal("width", setup.width);
  journal.addReal("height", setup.height);
  journal.addBoolean("showPlacedImages", setup.showPlacedImages != 0);
  journal.addReal("outputResolution", setup.outputResolution);
  journal.addBoolean("splitLongPaths", setup.splitLongPaths != 0);
  journal.addBoolean("useDefaultScreen", setup.useDefaultScreen != 0);
  journal.addBoolean("compatibleGradients", setup.compatibleGradients != 0);
  journal.addBoolean("printTiles", setup.printTiles != 0);
  journal.addBoolean("tileFullPages", setup.tileFullPages != 0);
  journal.endObject();
}

// Asking for the set-up shows that the plug-in is building art, whatever the answer is.
AIErr getDocumentSetup(AIDocumentSetup* setup) {
  return answer(
      kGetDocumentSetup,
      [&](Call& call) {
        call.required("setup", setup);
        call.host.journal.addNull("setup");
        if (DocumentNode* document = call.host.documents.current()) document->setupAsked = true;
      },
      [&](Call& call) {
        const DocumentNode* document = call.host.documents.current();
        if (document == nullptr) return kNoDocumentErr;
        *setup = document->setup;
        call.host.journal.removeLast();
        describeSetup(call.host.journal, *setup);
        return kNoErr;
      });
}

AIErr checkPageSize(const Call& call, float width, float height) {
  if (!std::isfinite(width) || !std::isfinite(height)) return kBadParameterErr;
  const bool isFlat = width <= 0 || height <= 0;
  return isFlat && call.host.options.flatPages == FlatPages::refused ? kBadParameterErr : kNoErr;
}

AIErr setDocumentSetup(const AIDocumentSetup* setup) {
  return answer(
      kSetDocumentSetup,
      [&](Call& call) {
        call.required("setup", setup);
        if (setup != nullptr) describeSetup(call.host.journal, *setup);
        if (DocumentNode* document = call.host.documents.current()) document->setupAsked = true;
      },
      [&](Call& call) {
        DocumentNode* document = call.host.documents.current();
        if (document == nullptr) return kNoDocumentErr;
        if (const AIErr code = checkPageSize(call, setup->width, setup->height); code != kNoErr) {
          return code;
        }
        document->setup = *setup;
        setPageSize(*document, setup->width, setup->height);
        return kNoErr;
      });
}

// The plug-in calls this slot as the older layout's function, with three parameters. In the browser
// a function must have as many as it is called with.
AIErr getAIVersion(std::int16_t*, std::int16_t*, std::int16_t*) {
  return answer(
      kGetAIVersion, [](Call&) {}, [](Call& call) { return call.host.options.appMajorVersion; });
}

AIErr getDocumentTargeting(std::int16_t* targetType, std::int16_t* x, std::int16_t* y) {
  return answer(
      kGetDocumentTargeting,
      [&](Call& call) {
        call.out("targetType", targetType);
        call.out("x", x);
        call.out("y", y);
      },
      [&](Call& call) {
        if (call.host.documents.current() == nullptr) return kNoDocumentErr;
        *targetType = 0;
        *x = 0;
        *y = 0;
        return kNoErr;
      });
}

}  // namespace

AIDocumentSuite documentTable(DocumentLayout layout) {
  auto table = tableOfMisuse<AIDocumentSuite>();
  table.SetDocumentRulerOrigin = setDocumentRulerOrigin;
  if (layout == DocumentLayout::newer) {
    table.GetDocumentSetup = getDocumentSetup;
    table.SetDocumentSetup = setDocumentSetup;
    table.GetDocumentTargeting = getAIVersion;
  } else {
    table.OlderGetDocumentSetup = getDocumentSetup;
    table.OlderSetDocumentSetup = setDocumentSetup;
    table.GetDocumentTargeting = getDocumentTargeting;
  }
  return table;
}

}  // namespace embedded
