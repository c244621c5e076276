// AI Layer suite, version 12. Works on the current document; index 0 is the topmost layer.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AILayerSuite {
  static constexpr SuiteId kId{"AI Layer Suite", 12};

  /// Gives the number of top-level layers; 0 when no document is open.
  AIErr (*CountLayers)(std::int32_t* count);
  /// Gives the layer at `n`, from 0, the topmost, to the count less 1.
  AIErr (*GetNthLayer)(std::int32_t n, AILayerHandle* layer);
  ReservedSlot reserved2;
  /// Makes it the current layer, on which art without another place goes. The layer must not be
  /// null.
  AIErr (*SetCurrentLayer)(AILayerHandle layer);
  /// Gives the topmost layer.
  AIErr (*GetFirstLayer)(AILayerHandle* layer);
  ReservedSlot reserved5;
  /// Makes a layer at an AIPaintOrder relative to `reference`. With a null reference and
  /// kPlaceAboveAll it becomes the topmost layer, index 0. The document owns it.
  AIErr (*InsertLayer)(AILayerHandle reference, std::int16_t paintOrder, AILayerHandle* layer);
  ReservedSlot reserved7[10];
  /// Unlocks the layer with 1, locks it with 0. No art can be made on a locked layer.
  AIErr (*SetLayerEditable)(AILayerHandle layer, AIBoolean editable);
  ReservedSlot reserved18[7];
  /// Gives 1 when the layer holds objects other than sublayers, else 0.
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
