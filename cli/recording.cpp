#include "cli/recording.h"

#include "cli/inkml_failure.h"
#include "cli/inkml_omissions.h"
#include "cli/pen_explanation.h"
#include "cli/report.h"
#include "cli/sentences.h"
#include "log/logger.h"
#include "penfile/pnx_parser.h"
#include "penfile/skip_watcher.h"
#include "platform/file.h"
#include "platform/paths.h"

namespace cli {

namespace {

template <class Condition>
std::size_t countStrokes(const Orvo::Document& document, Condition condition) {
  std::size_t count = 0;
  for (const Orvo::Layer& layer : document) {
    for (const Orvo::Stroke& stroke : layer) {
      if (condition(stroke.size())) ++count;
    }
  }
  return count;
}

}  // namespace

std::wstring wideName(const std::filesystem::path& file) {
  return platform::nativePathToWide(nativeName(file));
}

FileKind kindByName(const std::filesystem::path& file) {
  const std::filesystem::path extension = file.extension();
  return extension == ".kvo" || extension == ".inkml" ? FileKind::inkml : FileKind::pen;
}

Recording::Recording(std::filesystem::path file, FileKind kind)
    : file_(std::move(file)), kind_(kind) {
  if (kind_ == FileKind::inkml) {
    ink_ = Orvo::readInk(wideName(file_).c_str());
  } else {
    readPen();
  }
}

void Recording::readPen() {
  Orvo::Logger::silence();
  platform::File file = platform::openFile(wideName(file_).c_str(), "rb");
  std::FILE* const stream = file.get();
  Orvo::PnxParser parser(std::move(file));
  Orvo::EndlessSkipGuard guard(parser);
  parser.parse();
  pen_ = parser.document;
  penReport_ = parser.report();
  if (complete() && penReport_.unknownPackets > 0) damaged_ = findDamagedPackets(stream);
}

Orvo::Document& Recording::document() const {
  if (kind_ == FileKind::inkml) return *ink_.document;
  return *pen_;
}

std::string Recording::explainFailure() const {
  if (kind_ == FileKind::inkml) return cli::explainFailure(file_, ink_.report);
  return cli::explainFailure(file_, penReport_);
}

std::string Recording::explainOmissions() const {
  if (kind_ == FileKind::inkml) return cli::explainOmissions(ink_.report, document().size());
  return cli::explainOmissions(penReport_, damaged_);
}

std::string Recording::explainLosses(bool endsInZeros) const {
  if (kind_ == FileKind::inkml) return explainOmissions();
  Orvo::ParseReport report = penReport_;
  if (endsInZeros) report.cutPacket.reset();
  return cli::explainDamage(report, damaged_);
}

std::string Recording::explainDropped() const {
  return kind_ == FileKind::pen ? cli::explainDropped(penReport_) : "";
}

bool Recording::looksDamaged() const {
  return penReport_.cutPacket || penReport_.endlessPacket || damaged_.count > 0;
}

std::string Recording::explainUnknown() const {
  return kind_ == FileKind::pen ? cli::explainUnknown(penReport_) : "";
}

bool Recording::hasStrokes() const {
  return ink_.report.traces > 0 || countStrokes(document(), [](std::size_t) { return true; }) > 0;
}

std::string Recording::explainUndrawn() const {
  // The plug-in hands the host no more than the low 16 bits of the number of points.
  constexpr std::size_t kMostPoints = 65535;
  const std::size_t single = countStrokes(document(), [](std::size_t size) { return size == 1; });
  const std::size_t cut =
      countStrokes(document(), [](std::size_t size) { return size > kMostPoints; });
  std::string sentence;
  if (single > 0) addPart(sentence, counted(single, "stroke") + " of a single point not drawn");
  if (cut > 0) {
    addPart(sentence, counted(cut, "stroke") +
                          " of more than 65535 points drawn only in part, "
                          "penwick convert keeps all points");
  }
  return sentence;
}

}  // namespace cli
