// AI Document suite, version 13.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIDocumentSetup {
  AIReal width;  ///< page, in points
  AIReal height;
  AIBoolean showPlacedImages;
  AIReal outputResolution;
  AIBoolean splitLongPaths;
  AIBoolean useDefaultScreen;
  AIBoolean compatibleGradients;
  AIBoolean printTiles;
  AIBoolean tileFullPages;
};
static_assert(sizeof(AIDocumentSetup) == 36 && offsetof(AIDocumentSetup, height) == 4 &&
              offsetof(AIDocumentSetup, showPlacedImages) == 8 &&
              offsetof(AIDocumentSetup, outputResolution) == 12 &&
              offsetof(AIDocumentSetup, splitLongPaths) == 16 &&
              offsetof(AIDocumentSetup, useDefaultScreen) == 20 &&
              offsetof(AIDocumentSetup, compatibleGradients) == 24 &&
              offsetof(AIDocumentSetup, printTiles) == 28 &&
              offsetof(AIDocumentSetup, tileFullPages) == 32);

/// Gives the current document's set-up; 'DOC?' when no document is open.
using GetDocumentSetupFunction = AIErr (*)(AIDocumentSetup* setup);
/// Replaces the current document's set-up. May only be called while a file format reads a document.
using SetDocumentSetupFunction = AIErr (*)(const AIDocumentSetup* setup);
/// Returns the version of the document's format, a small number; it is not an error code.
using GetAIVersionFunction = std::int32_t (*)();
/// Gives three numbers about the document's target; the plug-in calls it only to see whether they
/// change.
using GetDocumentTargetingFunction = AIErr (*)(std::int16_t* targetType, std::int16_t* x,
                                               std::int16_t* y);

/// Version 14 and later have the set-up functions in slots 10 and 11, versions 10 and 11 had them
/// in 13 and 14, after three functions for the single crop box. Version 13 is assumed to be like
/// the later ones. While a document is open, slot 40 can be called without harm to tell the two
/// apart: given the addresses of three numbers, the older layout's GetDocumentTargeting changes
/// them, the newer layout's GetAIVersion leaves them alone.
struct AIDocumentSuite {
  static constexpr SuiteId kId{"AI Document Suite", 13};

  ReservedSlot reserved0[3];
  /// Puts the rulers' origin at a position, in points from the artboard's lower left corner.
  AIErr (*SetDocumentRulerOrigin)(const AIRealPoint* origin);
  ReservedSlot reserved4[6];
  /// This and the next one: newer layout only.
  GetDocumentSetupFunction GetDocumentSetup;
  SetDocumentSetupFunction SetDocumentSetup;
  ReservedSlot reserved12;
  /// This and the next one: older layout only.
  GetDocumentSetupFunction OlderGetDocumentSetup;
  SetDocumentSetupFunction OlderSetDocumentSetup;
  ReservedSlot reserved15[25];
  union {
    GetAIVersionFunction GetAIVersion;                  ///< newer layout
    GetDocumentTargetingFunction GetDocumentTargeting;  ///< older layout
  };
  ReservedSlot reserved41[33];
};
HOSTAPI_SLOT(AIDocumentSuite, SetDocumentRulerOrigin, 3);
HOSTAPI_SLOT(AIDocumentSuite, GetDocumentSetup, 10);
HOSTAPI_SLOT(AIDocumentSuite, SetDocumentSetup, 11);
HOSTAPI_SLOT(AIDocumentSuite, OlderGetDocumentSetup, 13);
HOSTAPI_SLOT(AIDocumentSuite, OlderSetDocumentSetup, 14);
HOSTAPI_SLOT(AIDocumentSuite, GetAIVersion, 40);
HOSTAPI_SLOT(AIDocumentSuite, GetDocumentTargeting, 40);
HOSTAPI_SLOT_COUNT(AIDocumentSuite, 74);

}  // namespace hostapi
