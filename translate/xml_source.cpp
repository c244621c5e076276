#include "translate/xml_source.h"

#include <algorithm>
#include <array>
#include <exception>
#include <expat.h>
#include <limits>
#include <memory>
#include <new>
#include <utility>

#include "translate/other_kinds.h"

namespace translate {
namespace {

// What the bytes 0x80 to 0x9F mean in Windows-1252; -1 where they mean nothing.
constexpr std::array<int, 32> kWindowsPunctuation = {
    0x20AC, -1,     0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, -1,     0x017D, -1,     -1,     0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, -1,     0x017E, 0x0178};

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

// The encodings that the library does not know by itself.
int describeEncoding(void* /*data*/, const XML_Char* name, XML_Encoding* encoding) {
  const bool isWindows =
      equalsIgnoringCase(name, "windows-1252") || equalsIgnoringCase(name, "cp1252");
  if (!isWindows && !equalsIgnoringCase(name, "latin1") && !equalsIgnoringCase(name, "ascii")) {
    return XML_STATUS_ERROR;
  }
  constexpr int kFirst = 0x80;
  for (int byte = 0; byte < 256; ++byte)
    encoding->map[byte] = byte;
  if (isWindows) std::ranges::copy(kWindowsPunctuation, encoding->map + kFirst);
  encoding->data = nullptr;
  encoding->convert = nullptr;
  encoding->release = nullptr;
  return XML_STATUS_OK;
}

class Reading {
 public:
  explicit Reading(XmlSink& sink) : sink_(sink) {}

  XmlOutcome read(std::string_view bytes) {
    if (bytes.empty()) return refused("the file is empty", 0);
    if (bytes.size() > std::numeric_limits<int>::max()) {
      return refused("it is larger than 2 GiB", 0);
    }
    if (const std::string_view kind = otherKindOf(bytes); !kind.empty()) {
      return refused("it is " + std::string(kind) + ", not InkML", 0);
    }
    open(declaresWrongUtf16(bytes) ? "UTF-8" : nullptr);
    const auto size = static_cast<int>(bytes.size());
    const XML_Status status = XML_Parse(parser_.get(), bytes.data(), size, XML_TRUE);
    if (thrown_ != nullptr) std::rethrow_exception(thrown_);
    if (status == XML_STATUS_OK || isStopped_) return std::move(outcome_);
    const XML_Error error = XML_GetErrorCode(parser_.get());
    if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
    return refused(wordsFor(error), line());
  }

 private:
  struct Freer {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  // Some programs declare UTF-16, since their strings are, and then save UTF-8.
  static bool declaresWrongUtf16(std::string_view bytes) {
    constexpr std::size_t kLongestDeclaration = 200;
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    if (!bytes.starts_with("<?xml")) return false;
    const std::string_view start = bytes.substr(0, kLongestDeclaration);
    const std::string_view declaration = start.substr(0, start.find("?>"));
    const std::size_t at = declaration.find("encoding");
    if (at == std::string_view::npos) return false;
    const std::size_t quote = declaration.find_first_of("'\"", at);
    return quote != std::string_view::npos &&
           equalsIgnoringCase(declaration.substr(quote + 1, 6), "utf-16");
  }

  void open(const char* encoding) {
    parser_.reset(XML_ParserCreate(encoding));
    if (parser_ == nullptr) throw std::bad_alloc();
    XML_Parser parser = parser_.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, onStart, onEnd);
    XML_SetCharacterDataHandler(parser, onText);
    XML_SetUnknownEncodingHandler(parser, describeEncoding, nullptr);
    XML_SetEntityDeclHandler(parser, onEntity);
    XML_SetSkippedEntityHandler(parser, onSkippedEntity);
    XML_SetExternalEntityRefHandler(parser, onOutsideEntity);
    XML_SetXmlDeclHandler(parser, onDeclaration);
  }

  static Reading& of(void* data) { return *static_cast<Reading*>(data); }

  // Exceptions must not pass through the library, which is written in C.
  template <class Call>
  void guarded(Call call) {
    if (isStopped_) return;
    try {
      call();
    } catch (...) {
      thrown_ = std::current_exception();
      stop("");
    }
  }

  static void onStart(void* data, const XML_Char* name, const XML_Char** attributes) {
    of(data).guarded([&] { of(data).start(name, attributes); });
  }
  static void onEnd(void* data, const XML_Char* /*name*/) {
    of(data).guarded([&] {
      --of(data).depth_;
      of(data).sink_.end();
    });
  }
  static void onText(void* data, const XML_Char* text, int length) {
    of(data).guarded([&] { of(data).sink_.text({text, static_cast<std::size_t>(length)}); });
  }
  static void onEntity(void* data, const XML_Char* /*name*/, int /*isParameter*/,
                       const XML_Char* /*value*/, int /*length*/, const XML_Char* /*base*/,
                       const XML_Char* /*system*/, const XML_Char* /*publicId*/,
                       const XML_Char* /*notation*/) {
    // Entities within entities use up the stack.
    if (++of(data).entities_ > kMostEntities) of(data).stop("it declares more than 200 entities");
  }
  static void onSkippedEntity(void* data, const XML_Char* /*name*/, int isParameter) {
    if (isParameter == 0) ++of(data).outcome_.outsideTexts;
  }
  static int onOutsideEntity(XML_Parser parser, const XML_Char* /*context*/,
                             const XML_Char* /*base*/, const XML_Char* /*system*/,
                             const XML_Char* /*publicId*/) {
    ++of(XML_GetUserData(parser)).outcome_.outsideTexts;
    return XML_STATUS_OK;
  }
  static void onDeclaration(void* data, const XML_Char* /*version*/, const XML_Char* encoding,
                            int /*standalone*/) {
    if (encoding != nullptr) of(data).guarded([&] { of(data).outcome_.encoding = encoding; });
  }

  void start(const XML_Char* name, const XML_Char** attributes) {
    if (++depth_ > kDeepestNesting) return stop("its elements are nested more than 500 deep");
    if (XML_GetSpecifiedAttributeCount(parser_.get()) > 2 * kMostAttributes) {
      return stop("an element has more than 10,000 attributes");
    }
    if (!sink_.start(name, attributes, line())) stop("");
  }

  void stop(const char* problem) {
    if (isStopped_) return;
    isStopped_ = true;
    outcome_.problem = problem;
    if (!outcome_.problem.empty()) outcome_.line = line();
    XML_StopParser(parser_.get(), XML_FALSE);
  }

  int line() const { return static_cast<int>(XML_GetCurrentLineNumber(parser_.get())); }

  XmlOutcome refused(std::string problem, int line) {
    outcome_.problem = std::move(problem);
    outcome_.line = line;
    return std::move(outcome_);
  }

  std::string wordsFor(XML_Error error) const {
    switch (error) {
      case XML_ERROR_NO_ELEMENTS:
      case XML_ERROR_UNCLOSED_TOKEN:
      case XML_ERROR_UNCLOSED_CDATA_SECTION:
      case XML_ERROR_PARTIAL_CHAR:
        return depth_ > 0 ? "it breaks off before its end" : "there is no element in it";
      case XML_ERROR_UNKNOWN_ENCODING:
        return "it declares an encoding that is not known";
      case XML_ERROR_AMPLIFICATION_LIMIT_BREACH:
        return "its entities grow to far more text than the document has";
      default:
        return std::string("it is not well-formed XML: ") + XML_ErrorString(error);
    }
  }

  XmlSink& sink_;
  std::unique_ptr<XML_ParserStruct, Freer> parser_;
  XmlOutcome outcome_;
  std::exception_ptr thrown_;
  int depth_ = 0;
  int entities_ = 0;
  bool isStopped_ = false;
};

}  // namespace

XmlOutcome readXml(std::string_view bytes, XmlSink& sink) {
  return Reading(sink).read(bytes);
}

}  // namespace translate
