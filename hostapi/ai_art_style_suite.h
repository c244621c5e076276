// AI Art Style suite, version 6.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct AIArtStyleSuite {
  static constexpr SuiteId kId{"AI Art Style Suite", 6};

  ReservedSlot reserved0[6];
  /// Gives the object a style; a null style removes the one it has. 'STYD' when the style is not in
  /// the current document, 'STYP' when it does not suit the object.
  AIErr (*SetArtStyle)(AIArtHandle art, AIArtStyleHandle style);
  ReservedSlot reserved7[5];
  /// Puts the style into the current document's list under a name of at most 63 characters and
  /// gives the style that is then in the list; a style of another document is copied. If the name
  /// is in use, a number is appended to it when `unique` is 1; otherwise the answer is 'NAM2'.
  AIErr (*AddNamedStyle)(AIArtStyleHandle style, const UnicodeStringBody* name, AIBoolean unique,
                         AIArtStyleHandle* namedStyle);
  ReservedSlot reserved13[4];
  /// Gives the named style of a document, which must not be null. If there is no such style the
  /// answer is an error, or 0 with a null style; which of the two is not known.
  AIErr (*GetArtStyleByNameFromDocument)(AIArtStyleHandle* style, const UnicodeStringBody* name,
                                         AIDocumentHandle document);
  ReservedSlot reserved18[19];
};
HOSTAPI_SLOT(AIArtStyleSuite, SetArtStyle, 6);
HOSTAPI_SLOT(AIArtStyleSuite, AddNamedStyle, 12);
HOSTAPI_SLOT(AIArtStyleSuite, GetArtStyleByNameFromDocument, 17);
HOSTAPI_SLOT_COUNT(AIArtStyleSuite, 37);

}  // namespace hostapi
