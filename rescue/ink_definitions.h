// The definitions of a damaged ink document: kept where they are whole, mended where they are not.
#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <string_view>
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

  /// The id of the context that a trace's reference, without "#", stands for: one that differs in a
  /// character or two counts as damaged. Otherwise the reference itself.
  std::string contextFor(std::string_view reference) const;

  /// Adds what is missing: the contexts that traces refer to, and the brushes and formats that
  /// contexts refer to. `references` are those of the traces, without "#", and how many have each.
  void complete(const std::map<std::string, std::size_t>& references);

  /// The element "definitions", with its line end.
  std::string text() const;
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
