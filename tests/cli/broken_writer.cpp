// Preloaded, this replaces the writer of the XML library: every document that is written ends
// inside a character, and does not open again.
#include <tinyxml.h>

__attribute__((visibility("default"))) bool TiXmlDocument::SaveFile(std::FILE* file) const {
  Print(file, 0);
  return std::fputc(0xE9, file) != EOF;
}
