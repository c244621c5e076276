#include "plugin/file_path.h"

#include "hostapi/ai_file_path_suite.h"
#include "plugin/error.h"
#include "plugin/suites.h"

using namespace hostapi;

namespace ai {

using Suite = AIFilePathSuite;

FilePath::FilePath(const FilePathBody& other) {
  throwIfFailed(call(&Suite::Copy, &other, &body_));
}

FilePath::FilePath(const UnicodeString& text, bool expandShortNames) {
  throwIfFailed(call(&Suite::Set, text.body(), static_cast<AIBool8>(expandShortNames), &body_));
}

FilePath::~FilePath() {
  if (body_.inside != nullptr) call(&Suite::DeleteFilePath, &body_);
}

UnicodeString FilePath::GetFileExtension() const {
  UnicodeString extension;
  throwIfFailed(call(&Suite::GetFileExtension, &body_, extension.body()));
  return extension;
}

UnicodeString fullPath(const FilePathBody& path, bool displayName) {
  UnicodeString text;
  throwIfFailed(call(&Suite::GetFullPath, &path, static_cast<AIBool8>(displayName), text.body()));
  return text;
}

}  // namespace ai
