// AI Art suite, version 16.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIArtSuite {
  static constexpr SuiteId kId{"AI Art Suite", 16};

  /// Makes an object of an ArtType at an AIPaintOrder relative to `reference`; the document owns
  /// it. kPlaceInsideOnTop needs a group as reference; with a null reference kPlaceAboveAll means
  /// on top in the current layer. 'ART?' when the type is unknown, 'ORD?' when the order is, 'NESS'
  /// when the layer is locked or hidden.
  AIErr (*NewArt)(std::int16_t type, std::int16_t paintOrder, AIArtHandle reference,
                  AIArtHandle* art);
  ReservedSlot reserved1[3];
  /// Gives the layer's own group, whose children are the layer's objects. A null layer stands for
  /// the current one.
  AIErr (*GetFirstArtOfLayer)(AILayerHandle layer, AIArtHandle* group);
  ReservedSlot reserved5[66];
};
HOSTAPI_SLOT(AIArtSuite, NewArt, 0);
HOSTAPI_SLOT(AIArtSuite, GetFirstArtOfLayer, 4);
HOSTAPI_SLOT_COUNT(AIArtSuite, 71);

}  // namespace hostapi
