#include "rescue/rescued.h"

namespace rescue {

std::string_view explain(LeftOut reason) {
  switch (reason) {
    case LeftOut::unreadable:
      return "cannot be read";
    case LeftOut::junkInFront:
      return "stands in front of the recording";
    case LeftOut::junkBehind:
      return "stands behind the last whole packet";
    case LeftOut::doubled:
      return "stands there twice";
    case LeftOut::headerPacket:
      return "is the header of a further recording";
    case LeftOut::madeUp:
      return "holds values that damage made up";
  }
  return "";
}

}  // namespace rescue
