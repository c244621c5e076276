#include "cli/sheet_card.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "art/document.h"
#include "cli/examination.h"
#include "cli/fields.h"
#include "cli/unopened.h"
#include "facts/pen_facts.h"
#include "render/pdf_and_png.h"
#include "render/spine.h"
#include "text/format.h"
#include "text/numbers.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

// Twice as many pixels as the picture has on the page, for fine screens and for paper.
constexpr int kPixels = 420;

constexpr double kMmPerPoint = 25.4 / 72;
constexpr art::Color kWhite{1, 1, 1};
constexpr double kUsualPressure = 0.5;

render::Options pictureOptions(const art::Document& document) {
  render::Options options;
  options.background = kWhite;
  options.size = render::PixelBox{kPixels, kPixels};
  // At this size the hairlines of a recording without pressure could not be seen.
  if (render::lacksPressure(document)) options.pressure = kUsualPressure;
  return options;
}

void draw(const art::Document& document, web::Card& card) {
  const double longer = std::max<double>({document.width, document.height, 1});
  const auto shown = [&](double length) {
    return std::max(1, static_cast<int>(std::lround(length / longer * kPixels / 2)));
  };
  render::Picture picture = render::toPng(document, pictureOptions(document));
  if (picture.refusal) {
    card.problem = *picture.refusal;
    return;
  }
  card.picture = std::move(picture.bytes);
  card.width = shown(document.width);
  card.height = shown(document.height);
  card.widthInMm = static_cast<int>(std::lround(document.width * kMmPerPoint));
  card.heightInMm = static_cast<int>(std::lround(document.height * kMmPerPoint));
  card.layers = document.layers.size();
  card.strokes = art::countPaths(document);
}

// "2012-05-31 14:07"; empty where the recording has no date.
std::string dateOf(const Recording& recording) {
  if (recording.pen() == nullptr) return {};
  const auto date = facts::dateOf(recording.pen()->dateTime.dateTimeBytes);
  if (!date) return {};
  return text::format("%04d-%02d-%02d %02d:%02d", date->year, date->month, date->day, date->hour,
                      date->minute);
}

// The fields of a card that are numbers, in the order in which they are sent.
template <class Card>
auto numbersOf(Card& card) {
  return std::tie(card.width, card.height, card.widthInMm, card.heightInMm, card.layers,
                  card.strokes);
}

template <class Number>
bool take(const std::string& words, Number& number) {
  const auto value = text::wholeNumber<Number>(words);
  number = value.value_or(0);
  return value.has_value();
}

}  // namespace

web::Card cardOf(const fs::path& file, const PluginRunOptions& run) {
  web::Card card;
  const PluginRun opened = runPlugin(file, run);
  if (!opened.document) {
    card.problem = explainUnopened(opened, file);
    return card;
  }
  draw(*opened.document, card);
  if (card.picture.empty()) return card;
  Examination found = examine(file);
  card.problem = found.failure.empty() ? found.losses : found.failure;
  card.date = dateOf(found.recording);
  return card;
}

std::string toBytes(const web::Card& card) {
  std::vector<std::string> numbers;
  std::apply([&](auto... number) { (numbers.push_back(std::to_string(number)), ...); },
             numbersOf(card));
  std::vector<std::string_view> fields{card.picture, card.date, card.problem};
  fields.insert(fields.end(), numbers.begin(), numbers.end());
  return joinFields(fields);
}

std::optional<web::Card> cardFromBytes(std::string_view bytes) {
  constexpr std::size_t kTexts = 3;
  constexpr std::size_t kNumbers = 6;
  const auto fields = splitFields(bytes);
  if (!fields || fields->size() != kTexts + kNumbers) return {};
  web::Card card;
  card.picture = fields->at(0);
  card.date = fields->at(1);
  card.problem = fields->at(2);
  std::size_t next = kTexts;
  const bool isWhole = std::apply(
      [&](auto&... number) { return (take(fields->at(next++), number) && ...); }, numbersOf(card));
  return isWhole ? std::optional(card) : std::nullopt;
}

}  // namespace cli
