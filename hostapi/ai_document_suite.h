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

using GetDocumentSetupFunction = AIErr (*)(AIDocumentSetup* setup);
/// Only while a document is being read.
using SetDocumentSetupFunction = AIErr (*)(const AIDocumentSetup* setup);
using GetAIVersionFunction = std::int32_t (*)();
using GetDocumentTargetingFunction = AIErr (*)(std::int16_t* targetType, std::int16_t* x,
                                               std::int16_t* y);

/// Version 14 and later have the set-up at 10 and 11, versions 10 and 11 had it at 13 and 14,
/// behind three functions of the single crop box. Version 13 is taken to be like the later ones.
/// The two tell themselves apart in slot 40, without harm while a document is open: called with the
/// address of three numbers, the older layout's GetDocumentTargeting changes them, the newer
/// layout's GetAIVersion leaves them alone.
struct AIDocumentSuite {
  static constexpr SuiteId kId{"AI Document Suite", 13};

  ReservedSlot reserved0[3];
  /// Relative to the artboard's lower left corner.
  AIErr (*SetDocumentRulerOrigin)(const AIRealPoint* origin);
  ReservedSlot reserved4[6];
  GetDocumentSetupFunction GetDocumentSetup;
  SetDocumentSetupFunction SetDocumentSetup;
  ReservedSlot reserved12;
  GetDocumentSetupFunction OlderGetDocumentSetup;  ///< this and the next: the older layout only
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
