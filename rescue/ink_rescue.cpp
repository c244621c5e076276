#include "rescue/ink_rescue.h"

#include <algorithm>
#include <utility>

#include "inkml/ink_reading.h"
#include "rescue/ink_doubled.h"
#include "rescue/ink_writer.h"
#include "rescue/pen_source.h"

namespace rescue {
namespace {

using std::size_t;
using std::string_view;

bool isSound(const Orvo::InkReport& report) {
  return report.failure == Orvo::InkFailure::none && report.problems.empty() &&
         report.encoding.empty();
}

class Rescue {
 public:
  explicit Rescue(string_view document) : source_(std::string(document)) { read(); }

  InkRescue run();

 private:
  string_view bytes() const { return source_.bytes().view(); }
  void read();
  void leaveOutDoubles();
  void leaveOut(const std::vector<DoubledBytes>& runs);
  std::vector<size_t> damagedPlaces() const;
  bool isOtherForm() const;

  Source source_;
  std::vector<InkPiece> pieces_;
  InkDefinitions definitions_;
  InkLayout layout_;
  PointForm form_;
  std::vector<InkPoint> points_;
  std::vector<Stretch> doubled_;
};

void Rescue::read() {
  pieces_ = scanInk(bytes());
  definitions_ = readDefinitions(bytes(), pieces_);
  layout_ = layOut(bytes(), pieces_, definitions_);
  form_ = usualForm(bytes(), layout_.regions);
  points_ = readPoints(bytes(), layout_.regions, form_);
}

void Rescue::leaveOut(const std::vector<DoubledBytes>& runs) {
  if (runs.empty()) return;
  std::vector<Source::Edit> edits;
  for (const DoubledBytes& run : runs) {
    edits.push_back({run.begin, run.end, ""});
    doubled_.push_back(
        {source_.placeOf(run.begin), source_.placeOf(run.end - 1) + 1, LeftOut::doubled});
  }
  source_.apply(edits);
  read();
}

// Where something that is no point stands among points, or a tag is broken.
std::vector<size_t> Rescue::damagedPlaces() const {
  std::vector<size_t> places;
  for (const InkPiece& piece : pieces_)
    if (piece.kind == InkPiece::Kind::broken || !piece.isClean) places.push_back(piece.begin);
  for (const InkPoint& point : points_)
    if (point.followsGap) places.push_back(point.begin);
  for (const InkRegion& region : layout_.regions)
    if (!region.isWhole) places.push_back(region.end);
  std::sort(places.begin(), places.end());
  return places;
}

void Rescue::leaveOutDoubles() {
  leaveOut(
      doubledPoints(bytes(), points_, layout_.regions, InkHabits(points_, layout_.regions, form_)));
  const std::vector<size_t> places = damagedPlaces();
  const std::vector<DoubledBytes> runs = doubledBytesAt(bytes(), places);
  if (runs.empty()) return;
  const auto before = source_;
  const auto doubledBefore = doubled_;
  leaveOut(runs);
  if (damagedPlaces().size() < places.size()) return;
  source_ = before;
  doubled_ = doubledBefore;
  read();
}

bool Rescue::isOtherForm() const {
  if (layout_.hasOtherGroups) return true;
  return declaresOtherPoints(bytes(), pieces_);
}

InkRescue Rescue::run() {
  InkRescue result;
  result.isOtherForm = isOtherForm();
  if (result.isOtherForm || !layout_.hasOwnTags) return result;
  leaveOutDoubles();
  const InkHabits habits(points_, layout_.regions, form_);
  const std::vector<PointFate> fates =
      judgePoints(bytes(), points_, layout_.regions, form_, habits);
  writeInk({bytes(), pieces_, definitions_, layout_, points_, fates, form_}, result);
  if (!isSoundInkDocument(result.bytes)) return {};
  for (Stretch& stretch : result.leftOut) {
    stretch.begin = source_.placeOf(stretch.begin);
    stretch.end = source_.placeOf(stretch.end - 1) + 1;
  }
  std::vector<Stretch>& all = result.leftOut;
  all.insert(all.end(), doubled_.begin(), doubled_.end());
  std::sort(all.begin(), all.end(),
            [](const Stretch& a, const Stretch& b) { return a.begin < b.begin; });
  result.saved = true;
  return result;
}

size_t countPoints(const Orvo::Document& document) {
  size_t points = 0;
  for (const Orvo::Layer& layer : document)
    for (const Orvo::Stroke& stroke : layer)
      points += stroke.size();
  return points;
}

InkRescue rescueUtf8(string_view document, Mend mend) {
  const Orvo::InkReading reading = Orvo::readInk(document);
  if (!isSound(reading.report)) return Rescue(document).run();
  if (mend == Mend::doubtful) {
    InkRescue mended = Rescue(document).run();
    if (mended.saved && mended.bytes != document) return mended;
  }
  InkRescue result;
  result.sound = result.saved = true;
  result.bytes = document;
  result.pointsKept = result.pointsAbout = countPoints(*reading.document);
  return result;
}

InkRescue rescueConverted(string_view document, InkEncoding encoding, Mend mend) {
  const Utf8Copy copy(document, encoding);
  InkRescue result = rescueUtf8(copy.text(), mend);
  result.sound = false;
  result.encoding = encoding;
  std::vector<size_t*> offsets;
  for (Stretch& stretch : result.leftOut)
    offsets.insert(offsets.end(), {&stretch.begin, &stretch.end});
  copy.toPlaces(std::move(offsets));
  return result;
}

}  // namespace

bool isSoundInkDocument(string_view document) {
  return isSound(Orvo::readInk(document).report);
}

InkRescue rescueInkDocument(string_view document, Mend mend) {
  const std::optional<InkEncoding> encoding = encodingOf(document);
  return encoding ? rescueConverted(document, *encoding, mend) : rescueUtf8(document, mend);
}

}  // namespace rescue
