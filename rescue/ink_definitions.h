// The definitions of a damaged ink document: kept where they are whole, mended where they are not.
#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "rescue/ink_scan.h"

namespace rescue {

/// A trace format, brush or context.
struct InkDefinition {
  std::string id;    ///< Empty where it is lost.
  std::string text;  ///< The element as it is written, but of a context only if it is whole.
  bool isWhole = false;
  std::string brush;  ///< What a context refers to, without "#".
  std::string format;
  std::size_t document = 0;  ///< In which it stands, of several in one file.
};

struct InkDefinitions {
  std::vector<InkDefinition> formats;
  std::vector<InkDefinition> brushes;
  std::vector<InkDefinition> contexts;
  /// For each piece of the document whether it belongs to the definitions, ...
  std::vector<bool> isTaken;
  /// ... and whether it comes out in them.
  std::vector<bool> isKept;
  std::size_t putIn = 0;  ///< Definitions that were missing.
  std::size_t mended = 0;
  std::size_t renamed = 0;  ///< Those of further documents whose ids were taken.

  /// The id that a reference at this byte of the file, without "#", stands for: in a further
  /// document a context may have got a new one.
  std::string contextAt(std::size_t place, std::string_view reference) const;

  /// The id of the context that a trace's reference, without "#", stands for: one that differs in a
  /// character or two counts as damaged. Otherwise the reference itself.
  std::string contextFor(std::string_view reference) const;

  /// Adds what is missing: the contexts that traces refer to, and the brushes and formats that
  /// contexts refer to. `references` are those of the traces, without "#", and how many have each.
  void complete(const std::map<std::string, std::size_t>& references);

  /// The element "definitions", with its line end.
  std::string text() const;

  /// Where the second document and those behind it begin, and the new ids of contexts, by the
  /// number of their document and their old ids.
  std::vector<std::size_t> furtherDocuments;
  std::map<std::pair<std::size_t, std::string>, std::string> newContexts;
};

/// Whether an id differs from another in one or two bytes and agrees in more, so that it may be
/// that one, damaged.
bool isDamagedForm(std::string_view id, std::string_view sound);

/// Takes the definitions out of the pieces of a document.
InkDefinitions readDefinitions(std::string_view bytes, std::span<const InkPiece> pieces);

/// Whether the document declares, in whole trace formats alone, other channels or units than those
/// that points are always read in: another program wrote it.
bool declaresOtherPoints(std::string_view bytes, std::span<const InkPiece> pieces);

}  // namespace rescue
