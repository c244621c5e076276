// AI Art Style suite, version 6.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIArtStyleSuite {
  static constexpr SuiteId kId{"AI Art Style Suite", 6};

  ReservedSlot reserved0[6];
  /// 'STYD' when the style is not in the current document, 'STYP' when it does not suit the object;
  /// a null style takes the style off.
  AIErr (*SetArtStyle)(AIArtHandle art, AIArtStyleHandle style);
  ReservedSlot reserved7[5];
  /// Gives the style a name in the current document's list; a style of another document is copied
  /// in. With unique, a number is appended to a name in use; without, 'NAM2'.
  AIErr (*AddNamedStyle)(AIArtStyleHandle style, const UnicodeStringBody* name, AIBoolean unique,
                         AIArtStyleHandle* namedStyle);
  ReservedSlot reserved13[4];
  /// Named styles only. When there is none: an error, or 0 with a null style; which, is not known.
  AIErr (*GetArtStyleByNameFromDocument)(AIArtStyleHandle* style, const UnicodeStringBody* name,
                                         AIDocumentHandle document);
  ReservedSlot reserved18[19];
};
HOSTAPI_SLOT(AIArtStyleSuite, SetArtStyle, 6);
HOSTAPI_SLOT(AIArtStyleSuite, AddNamedStyle, 12);
HOSTAPI_SLOT(AIArtStyleSuite, GetArtStyleByNameFromDocument, 17);
HOSTAPI_SLOT_COUNT(AIArtStyleSuite, 37);

}  // namespace hostapi
