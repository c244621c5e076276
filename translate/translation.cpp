#include "translate/translation.h"

#include "translate/annotations.h"
#include "translate/brushes.h"
#include "translate/drawing.h"
#include "translate/ink_tree.h"
#include "translate/ink_walk.h"
#include "translate/packed.h"

namespace translate {
namespace {

class Translator {
 public:
  Translator(const InkTree& tree, const Options& options, Remarks& remarks, Translation& result)
      : tree_(tree),
        options_(options),
        remarks_(remarks),
        result_(result),
        contexts_(tree, remarks) {}

  void run() {
    Brushes brushes(tree_, contexts_, remarks_, *result_.definitions);
    brushes.declare();
    std::vector<InkTree::Index> brushOfStroke;
    draw(brushOfStroke);
    for (const InkTree::Index brush : brushOfStroke)
      result_.brushes.push_back(brushes.of(brush));
    count();
    remarks_.add(RemarkKind::brushesNotDrawn, result_.definitions->brushes.size() - 1);
    if (result_.traces == 0) remarks_.add(RemarkKind::nothingToDraw);
  }

 private:
  void draw(std::vector<InkTree::Index>& brushOfStroke) {
    Drawing drawing(remarks_);
    InkWalk walk(tree_, contexts_, drawing, remarks_);
    walk.run();
    drawing.settleScale(options_.millimetresPerUnit);
    drawing.settlePressure();
    drawing.settleTimes();
    drawing.moveInto(*result_.document, brushOfStroke);
    result_.document->annotations() = annotationsIn(tree_, 0);
    remarks_.add(RemarkKind::annotationsLeftOut, countAnnotations(tree_) - walk.keptAnnotations() -
                                                     result_.document->annotations().size());
  }

  void count() {
    result_.groups = result_.document->size();
    for (const Orvo::Layer& layer : *result_.document) {
      result_.traces += layer.size();
      for (const Orvo::Stroke& stroke : layer)
        result_.points += stroke.size() - 1;
    }
  }

  const InkTree& tree_;
  const Options& options_;
  Remarks& remarks_;
  Translation& result_;
  Contexts contexts_;
};

// The document as a tree, or why there is none.
TreeReading readTree(std::string_view bytes, Remarks& remarks) {
  if (!isPacked(bytes)) return readInkTree(bytes, remarks);
  const Unpacked unpacked = unpack(bytes);
  if (!unpacked.problem.empty()) return {{}, unpacked.problem, 0};
  return readInkTree(unpacked.bytes, remarks);
}

}  // namespace

Translation translateInk(std::string_view bytes, const Options& options) {
  Translation result;
  result.document = std::make_unique<Orvo::Document>();
  result.definitions = std::make_unique<Orvo::InkMLDefinitions>();
  Remarks remarks;
  const TreeReading reading = readTree(bytes, remarks);
  result.problem = reading.problem;
  result.line = reading.line;
  if (!result.problem.empty()) return result;
  Translator(reading.tree, options, remarks, result).run();
  result.remarks = remarks.all();
  result.document->complete.value = true;
  return result;
}

}  // namespace translate
