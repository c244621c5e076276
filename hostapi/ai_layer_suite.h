// AI Layer suite, version 12. Works on the current document; index 0 is the topmost layer.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AILayerSuite {
  static constexpr SuiteId kId{"AI Layer Suite", 12};

  AIErr (*CountLayers)(std::int32_t* count);  ///< 0 when no document is open
  AIErr (*GetNthLayer)(std::int32_t n, AILayerHandle* layer);
  ReservedSlot reserved2;
  AIErr (*SetCurrentLayer)(AILayerHandle layer);
  AIErr (*GetFirstLayer)(AILayerHandle* layer);  ///< the topmost
  ReservedSlot reserved5;
  /// With no reference and kPlaceAboveAll: a new topmost layer.
  AIErr (*InsertLayer)(AILayerHandle reference, std::int16_t paintOrder, AILayerHandle* layer);
  ReservedSlot reserved7[10];
  AIErr (*SetLayerEditable)(AILayerHandle layer, AIBoolean editable);
  ReservedSlot reserved18[7];
  /// True when it holds objects other than sublayers.
  AIErr (*LayerHasArt)(AILayerHandle layer, AIBoolean* hasArt);
  ReservedSlot reserved26[14];
};
HOSTAPI_SLOT(AILayerSuite, CountLayers, 0);
HOSTAPI_SLOT(AILayerSuite, GetNthLayer, 1);
HOSTAPI_SLOT(AILayerSuite, SetCurrentLayer, 3);
HOSTAPI_SLOT(AILayerSuite, GetFirstLayer, 4);
HOSTAPI_SLOT(AILayerSuite, InsertLayer, 6);
HOSTAPI_SLOT(AILayerSuite, SetLayerEditable, 17);
HOSTAPI_SLOT(AILayerSuite, LayerHasArt, 25);
HOSTAPI_SLOT_COUNT(AILayerSuite, 40);

}  // namespace hostapi
