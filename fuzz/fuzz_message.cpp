// Any bytes as the messages with which a host opens a file: any record, any name, any handle and
// any order. Whatever a message holds, the plug-in must answer, and must give everything back. A
// file whose ending says nothing is read as the kind of the file before it, so this also tries each
// reader on files of the other kind.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <span>
#include <string>

#include "embedded/session.h"
#include "fuzz/input.h"
#include "fuzz/own_folder.h"
#include "penfile/document_loader.h"

extern "C" hostapi::SPErr PluginMain(const char* caller, const char* selector, void* message);

namespace {

using fuzz::check;
using Bytes = std::span<const std::uint8_t>;

constexpr const char* kEndings[] = {".pnx", ".eli", ".kvo", ".inkml", ".PNX", ".ink", "", "."};

constexpr const char* kSelectors[] = {hostapi::selector::kGo,
                                      hostapi::selector::kCheck,
                                      hostapi::selector::kGetParameters,
                                      hostapi::selector::kDoAction,
                                      hostapi::selector::kUpdateFileFormat,
                                      "AI Set Parameters",
                                      ""};

// What a message begins with is the host's own.
constexpr std::size_t kCommonPart = sizeof(hostapi::SPMessageData);

struct alignas(std::max_align_t) Block {
  std::array<std::uint8_t, 512> bytes{};

  void put(std::size_t offset, const void* data, std::size_t size) {
    std::memcpy(bytes.data() + offset, data, size);
  }
};

// The first bytes say which message is sent: choices, two selectors, the ending of the file, the
// length of the record, which follows. The rest is the file.
struct Plan {
  static constexpr std::size_t kSize = 5;

  bool pathInPlainRecord, pathBehindFileRecord, pathFromBytes, another;
  std::array<const char*, 2> selectors;
  std::string name;
  Block record;
  Bytes file;

  explicit Plan(Bytes input)
      : pathInPlainRecord((input[0] & 1) != 0),
        pathBehindFileRecord((input[0] & 2) != 0),
        pathFromBytes((input[0] & 4) != 0),
        another((input[0] & 8) != 0),
        selectors{kSelectors[input[1] % std::size(kSelectors)],
                  kSelectors[input[2] % std::size(kSelectors)]},
        name(std::string("file") + kEndings[input[3] % std::size(kEndings)]) {
    const Bytes behind = input.subspan(kSize);
    const std::size_t length =
        std::min<std::size_t>({std::size_t{2} * input[4], behind.size(), 480});
    record.put(kCommonPart, behind.data(), length);
    file = behind.subspan(length);
  }

  // The file's own path, or bytes of the record taken as one.
  std::string path() const {
    constexpr std::size_t kLongest = 64;
    if (!pathFromBytes) return fuzz::fileNamed(name);
    const auto* const text = reinterpret_cast<const char*>(record.bytes.data()) + kCommonPart;
    return std::string(text, kLongest);
  }
};

void send(embedded::Session& session, const Plan& plan, const char* selector) {
  hostapi::FilePathBody path = session.host().makeFilePath(plan.path());
  Block block = plan.record;
  if (plan.pathInPlainRecord) {
    block.put(offsetof(hostapi::AIFileFormatMessage, filePath), &path, sizeof path);
  }
  if (plan.pathBehindFileRecord) {
    block.put(offsetof(hostapi::AIFileFormatMessageWithFileRecord, filePath), &path, sizeof path);
  }
  session.send(hostapi::caller::kFileFormat, selector, block.bytes.data());
  session.host().freeFilePath(path);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < Plan::kSize) return 0;
  const Plan plan({data, size});
  std::ofstream(fuzz::fileNamed(plan.name), std::ios::binary)
      .write(reinterpret_cast<const char*>(plan.file.data()),
             static_cast<std::streamsize>(plan.file.size()));
  Orvo::fileKind = Orvo::kPenFile;
  embedded::Session session(embedded::Module::ofEntry(&PluginMain));
  check(session.start().allAnsweredZero());
  if (plan.another) check(session.open(fuzz::fileNamed("none.kvo")).code("AI Go").has_value());
  session.host().newDocument();
  for (const char* selector : plan.selectors)
    send(session, plan, selector);
  const std::size_t layers = session.host().takeDocument().layers.size();
  check(layers > 0);
  check(session.end().misuse.empty());
  check(session.host().liveStrings() == 0 && session.host().livePaths() == 0);
  check(session.host().acquiredSuites() == 0 && session.host().liveBlocks() == 0);
  return 0;
}
