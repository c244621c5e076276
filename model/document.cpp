#include "model/document.h"

#include <cstdio>

namespace Orvo {

void dumpPointCounts(const Document& document) {
  if (!document.complete.value) return;
  for (const Layer& layer : document) {
    for (const Stroke& stroke : layer) {
      std::printf("there are %zu points in this stroke\n", stroke.size());
    }
  }
}

}  // namespace Orvo
