// Cards of a contact sheet.
#pragma once

#include "web/contact_sheet.h"

namespace webtest {

/// A card whose picture, "foo", is none.
inline web::Card soundCard() {
  return {.name = "cup.pnx",
          .link = "drawings/cup.pnx",
          .picture = "foo",
          .width = 200,
          .height = 100,
          .date = "2012-05-31 14:07",
          .widthInMm = 210,
          .heightInMm = 100,
          .layers = 1,
          .strokes = 12,
          .problem = {}};
}

}  // namespace webtest
