// Ink documents as text, as files and as trees.
#pragma once

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <tinyxml.h>

#include "platform/file.h"
#include "tests/support/pen/open_bytes.h"

namespace inktest {

/// An open file, at its start, that holds the text; it is deleted when it is closed.
inline platform::File openText(std::string_view text) {
  return pentest::openBytes({reinterpret_cast<const unsigned char*>(text.data()), text.size()});
}

/// Everything in an open file.
inline std::string contentOf(std::FILE* file) {
  std::string text;
  std::rewind(file);
  for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file))
    text += static_cast<char>(c);
  return text;
}

/// Loads the text as a file is loaded.
inline bool load(std::string_view text, TiXmlDocument& xml) {
  return xml.LoadFile(openText(text).get(), TIXML_ENCODING_UTF8);
}

/// A node as the XML library writes it to a file.
inline std::string printed(const TiXmlNode& node) {
  const platform::File file = pentest::temporaryFile();
  node.Print(file.get(), 0);
  return contentOf(file.get());
}

/// A text loaded like a file; the test fails when it does not load.
class XmlTree {
 public:
  explicit XmlTree(std::string_view text) { EXPECT_TRUE(load(text, xml_)) << text; }

  TiXmlDocument& document() { return xml_; }
  const TiXmlElement* root() const { return xml_.RootElement(); }

  /// The first element in document order with this name; null when there is none.
  const TiXmlElement* named(std::string_view name) const {
    return find(xml_, [&](const TiXmlElement& element) { return element.Value() == name; });
  }

  /// The same for the attribute "id".
  const TiXmlElement* withId(std::string_view id) const {
    return find(xml_, [&](const TiXmlElement& element) {
      const char* value = element.Attribute("id");
      return value != nullptr && value == id;
    });
  }

 private:
  template <class Wanted>
  static const TiXmlElement* find(const TiXmlNode& parent, Wanted wanted) {
    for (const TiXmlElement* child = parent.FirstChildElement(); child;
         child = child->NextSiblingElement()) {
      if (wanted(*child)) return child;
      if (const TiXmlElement* found = find(*child, wanted)) return found;
    }
    return nullptr;
  }

  TiXmlDocument xml_;
};

}  // namespace inktest
