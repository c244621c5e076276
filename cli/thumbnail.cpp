#include "cli/thumbnail.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <optional>
#include <system_error>

#include "cli/input_file.h"
#include "cli/limits.h"
#include "cli/module_place.h"
#include "cli/outputs.h"
#include "cli/plugin_run.h"
#include "cli/prepared_input.h"
#include "cli/unopened.h"
#include "render/drawing.h"
#include "render/pdf_and_png.h"
#include "render/spine.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

constexpr art::Color kWhite{1, 1, 1};
constexpr double kUsualPressure = 0.5;
/// Of the longer side of the drawing.
constexpr double kMargin = 1.0 / 16;
/// In points, half an inch: a single dot stays a dot.
constexpr double kLeastSide = 36;

/// What holds the ink that can be seen; nothing where there is none. Curves do not reach all of
/// their control points, so it is the outlines that count.
std::optional<render::Extent> inkOf(const art::Document& document, const render::Options& options) {
  std::optional<render::Extent> ink;
  for (const render::DrawnLayer& layer : render::drawingOf(document, options).layers) {
    if (!layer.visible) continue;
    for (const render::Stroke& stroke : layer.strokes) {
      if (stroke.outline.contours.empty()) continue;
      if (!ink) ink.emplace();
      ink->include(stroke.outline.extent);
    }
  }
  return ink;
}

/// The drawing with its margin.
art::Rect sheetAround(const render::Extent& ink) {
  const double width = ink.right - ink.left;
  const double height = ink.top - ink.bottom;
  const double margin = std::max(width, height) * kMargin;
  const double across = std::max(width / 2 + margin, kLeastSide / 2);
  const double up = std::max(height / 2 + margin, kLeastSide / 2);
  const double middle = ink.left + width / 2;
  const double centre = ink.bottom + height / 2;
  return {static_cast<float>(middle - across), static_cast<float>(centre - up),
          static_cast<float>(middle + across), static_cast<float>(centre + up)};
}

render::Picture draw(art::Document& document, int size) {
  render::Options options;
  options.background = kWhite;
  options.size = render::PixelBox{size, size};
  // At this size the hairlines of a recording without pressure could not be seen.
  if (render::lacksPressure(document)) options.pressure = kUsualPressure;
  if (const auto ink = inkOf(document, options)) document.page = sheetAround(*ink);
  return render::toPng(document, options);
}

/// Writes into the file itself; gives one sentence where that fails.
std::optional<std::string> writeThrough(const fs::path& target, std::string_view bytes) {
  std::error_code error;
  const bool isNew = !fs::exists(target, error);
  errno = 0;
  std::ofstream file(target, std::ios::binary | std::ios::trunc);
  const bool isOpen = file.is_open();
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (file) return {};
  std::string sentence = "cannot be written: " + std::generic_category().message(errno);
  // No part of a picture stays.
  if (isOpen && isNew) fs::remove(target, error);
  if (isOpen && !isNew) fs::resize_file(target, 0, error);
  return sentence;
}

ExitStatus fail(const fs::path& file, std::string_view sentence) {
  reportError(file, sentence);
  return ExitStatus::failed;
}

}  // namespace

ExitStatus makeThumbnail(const fs::path& file, const fs::path& target, int size) {
  if (const auto refusal = refusalToOverwrite(file, target, false)) return fail(target, *refusal);
  if (const auto refusal = refusalToOpenFiles()) return fail(file, *refusal);
  const InputFile input(file, {});
  if (input.problem()) return fail(file, *input.problem());
  const PreparedInput prepared(input.path(), {});
  if (prepared.problem()) return fail(file, *prepared.problem());
  PluginRunOptions options;
  options.module = findModule();
  PluginRun run = runPlugin(prepared.path(), options);
  if (!run.document) return fail(file, explainUnopened(run, prepared.path()));
  const render::Picture picture = draw(*run.document, size);
  if (picture.refusal) return fail(file, *picture.refusal);
  if (const auto problem = writeThrough(target, picture.bytes)) return fail(target, *problem);
  return ExitStatus::done;
}

}  // namespace cli
