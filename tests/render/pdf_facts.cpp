#include "pdf_facts.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

namespace render_tests {

namespace {

std::vector<std::string> namesOf(QPDFObjectHandle groups) {
  std::vector<std::string> names;
  for (QPDFObjectHandle& group : groups.getArrayAsVector())
    names.push_back(group.getKey("/Name").getUTF8Value());
  return names;
}

}  // namespace

PdfFacts readPdf(const std::string& bytes) {
  PdfFacts facts;
  QPDF pdf;
  pdf.setSuppressWarnings(true);
  pdf.processMemoryFile("picture", bytes.data(), bytes.size());
  QPDFObjectHandle page = pdf.getAllPages().at(0);
  for (QPDFObjectHandle& side : page.getKey("/MediaBox").getArrayAsVector())
    facts.box.push_back(side.getNumericValue());
  if (page.hasKey("/UserUnit")) facts.userUnit = page.getKey("/UserUnit").getNumericValue();
  QPDFObjectHandle layers = pdf.getRoot().getKey("/OCProperties");
  if (layers.isDictionary()) {
    facts.layers = namesOf(layers.getKey("/OCGs"));
    facts.order = namesOf(layers.getKey("/D").getKey("/Order"));
    facts.off = namesOf(layers.getKey("/D").getKey("/OFF"));
  }
  const auto content = page.getKey("/Contents").getStreamData();
  facts.content.assign(reinterpret_cast<const char*>(content->getBuffer()), content->getSize());
  facts.warned = pdf.anyWarnings();
  return facts;
}

}  // namespace render_tests
