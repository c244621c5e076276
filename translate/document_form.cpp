#include "translate/document_form.h"

#include "translate/ink_names.h"
#include "translate/packed.h"
#include "translate/xml_source.h"

namespace translate {
namespace {

class FormSink final : public XmlSink {
 public:
  bool start(std::string_view name, const char* const* attributes, int /*line*/) override {
    const std::string_view meaning = names_.enter(name, attributes);
    ++depth_;
    if (depth_ == 1) {
      isInk_ = meaning == "ink";
      isPlainInk_ = name == "ink";
      return isPlainInk_;
    }
    if (meaning != "tracegroup") return true;
    if (name != "tracegroup") {
      hasStandardGroup_ = true;
    } else if (depth_ == 2) {
      hasOwnGroup_ = true;
    }
    return !hasStandardGroup_;
  }
  void end() override {
    names_.leave();
    --depth_;
  }
  void text(std::string_view /*part*/) override {}

  DocumentForm form() const {
    if (!isInk_) return DocumentForm::notInk;
    return isPlainInk_ && hasOwnGroup_ && !hasStandardGroup_ ? DocumentForm::subset
                                                             : DocumentForm::other;
  }

 private:
  InkNames names_;
  int depth_ = 0;
  bool isInk_ = false;
  bool isPlainInk_ = false;
  bool hasOwnGroup_ = false;
  bool hasStandardGroup_ = false;
};

// The plug-in's reader takes bytes of 8 bits only.
bool isUtf16(std::string_view bytes) {
  using namespace std::string_view_literals;
  return bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE") ||
         bytes.starts_with("<\0"sv) || bytes.starts_with("\0<"sv);
}

}  // namespace

DocumentForm formOf(std::string_view bytes) {
  Unpacked unpacked;
  const bool isPackedUp = isPacked(bytes);
  if (isPackedUp) {
    unpacked = unpack(bytes);
    bytes = unpacked.bytes;
  }
  FormSink sink;
  readXml(bytes, sink);
  const DocumentForm form = sink.form();
  const bool isPlain = !isPackedUp && !isUtf16(bytes);
  return form == DocumentForm::subset && !isPlain ? DocumentForm::other : form;
}

}  // namespace translate
