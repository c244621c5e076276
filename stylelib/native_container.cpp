#include "stylelib/native_container.h"

#include <string_view>

#include "stylelib/inflater.h"
#include "stylelib/limits.h"
#include "stylelib/pdf_file.h"

namespace stylelib {

namespace {

constexpr std::string_view kOneRunMark = "%AI12_CompressedData";

NativeText refuse(std::string_view problem) {
  return {{}, std::string(problem)};
}

// The native data of CS6: one run of deflated bytes after a mark.
NativeText inflateRun(std::string_view run) {
  NativeText inflated;
  switch (Inflater().append(run, inflated.text, kMostInflatedBytes).outcome) {
    case Inflater::Outcome::whole:
      return inflated;
    case Inflater::Outcome::tooLarge:
      return refuse("it inflates to more than 16 MiB");
    case Inflater::Outcome::damaged:
      break;
  }
  return refuse("its compressed native data is damaged");
}

NativeText unwrapPdf(std::string_view bytes) {
  PdfFile file(bytes);
  NativeText native;
  std::string_view problem;
  for (const auto& [place, number] : file.privateBlocks()) {
    if (place < 2) continue;  // the first block is a preamble
    problem = file.appendStream(number, native.text);
    if (!problem.empty()) break;
  }
  if (!file.exceeded().empty()) return refuse(file.exceeded());
  if (!problem.empty()) return refuse(problem);
  if (native.text.empty()) {
    return refuse("it is a PDF without native data; save it again with native data included");
  }
  if (!native.text.starts_with(kOneRunMark)) return native;
  return inflateRun(std::string_view(native.text).substr(kOneRunMark.size()));
}

}  // namespace

NativeText unwrapNative(std::span<const unsigned char> bytes) {
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  if (text.size() > kMostFileBytes) return refuse("it is larger than 16 MiB");
  if (text.starts_with("%PDF-")) return unwrapPdf(text);
  if (text.starts_with("%!PS-Adobe")) return {std::string(text), {}};
  if (text.empty()) return refuse("it is empty");
  return refuse("it is not a native file: it begins with neither %PDF- nor %!PS-Adobe");
}

}  // namespace stylelib
