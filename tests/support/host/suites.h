// The suites of a host as a plug-in has them, and strings and paths made through them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "embedded/host.h"
#include "hostapi/ai_file_path_suite.h"
#include "hostapi/ai_unicode_string_suite.h"
#include "hostapi/sp_basic_suite.h"

namespace test {

/// The table of a suite at the version that the interface names; null when the host does not have
/// it.
template <class Suite>
const Suite* acquire(const embedded::Host& host) {
  const void* table = nullptr;
  if (host.basic()->AcquireSuite(Suite::kId.name, Suite::kId.version, &table) != 0) return nullptr;
  return static_cast<const Suite*>(table);
}

/// A string of the host from UTF-8; destroyed with this.
class HostText {
 public:
  HostText(const embedded::Host& host, std::string_view text)
      : suite_(acquire<hostapi::AIUnicodeStringSuite>(host)) {
    suite_->Initialize(&body_, text.data(), static_cast<std::int64_t>(text.size()),
                       hostapi::kAIUTF8CharacterEncoding);
  }
  ~HostText() { suite_->Destroy(&body_); }
  HostText(const HostText&) = delete;
  HostText& operator=(const HostText&) = delete;

  hostapi::UnicodeStringBody* body() { return &body_; }

 private:
  const hostapi::AIUnicodeStringSuite* suite_;
  hostapi::UnicodeStringBody body_;
};

/// The code points of a string, read one by one as a plug-in does.
inline std::u32string characters(const embedded::Host& host,
                                 const hostapi::UnicodeStringBody& string) {
  const auto* suite = acquire<hostapi::AIUnicodeStringSuite>(host);
  std::u32string text;
  hostapi::UTF32TextChar character = 0;
  while (suite->GetChar(&string, text.size(), &character) == 0)
    text += static_cast<char32_t>(character);
  return text;
}

/// A file path of the host from UTF-8 text; deleted with this.
class HostFilePath {
 public:
  HostFilePath(const embedded::Host& host, std::string_view text)
      : suite_(acquire<hostapi::AIFilePathSuite>(host)) {
    HostText string(host, text);
    suite_->Set(string.body(), 1, &body_);
  }
  ~HostFilePath() { suite_->DeleteFilePath(&body_); }
  HostFilePath(const HostFilePath&) = delete;
  HostFilePath& operator=(const HostFilePath&) = delete;

  hostapi::FilePathBody* body() { return &body_; }

 private:
  const hostapi::AIFilePathSuite* suite_;
  hostapi::FilePathBody body_;
};

}  // namespace test
