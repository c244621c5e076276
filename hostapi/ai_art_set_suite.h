// AI Art Set suite, version 7.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

/// Counts and indices have 32 bits in version 6 and 64 in version 9; version 7 should have 32. The
/// declarations suit both: the caller zeroes 64 bits, the host may write and read only 32.
struct AIArtSetSuite {
  static constexpr SuiteId kId{"AI Art Set Suite", 7};

  /// Gives a new, empty set, which the caller owns. The plug-in never disposes of its sets: they
  /// stay in the host's memory.
  AIErr (*NewArtSet)(AIArtSet* set);
  ReservedSlot reserved1;
  /// Gives the number of objects in the set, in 32 or 64 bits: see above.
  AIErr (*CountArtSet)(AIArtSet set, std::uint64_t* count);
  /// Gives the object at `index`, from 0 to the count less 1.
  AIErr (*IndexArtSet)(AIArtSet set, std::uint64_t index, AIArtHandle* art);
  ReservedSlot reserved4[3];
  /// Replaces the set's contents with the layer's objects, whatever their type.
  AIErr (*LayerArtSet)(AILayerHandle layer, AIArtSet set);
  ReservedSlot reserved8[8];
};
HOSTAPI_SLOT(AIArtSetSuite, NewArtSet, 0);
HOSTAPI_SLOT(AIArtSetSuite, CountArtSet, 2);
HOSTAPI_SLOT(AIArtSetSuite, IndexArtSet, 3);
HOSTAPI_SLOT(AIArtSetSuite, LayerArtSet, 7);
HOSTAPI_SLOT_COUNT(AIArtSetSuite, 16);

}  // namespace hostapi
