// The suites that a plug-in built on the standard frame acquires but never calls.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

inline constexpr SuiteId kContextSuite{"AI Context Suite", 6};
inline constexpr SuiteId kFoldersSuite{"AI Folders Suite", 4};
inline constexpr SuiteId kBlocksSuite{"SP Blocks Suite", 2};
inline constexpr SuiteId kTextFrameSuite{"AI Text Frame Suite", 3};
inline constexpr SuiteId kMatchingArtSuite{"AI Matching Art Suite", 6};
inline constexpr SuiteId kMdMemorySuite{"AI MdMemory Suite", 2};
inline constexpr SuiteId kApplicationSuite{"AI Application Suite", 2};
inline constexpr SuiteId kDocumentListSuite{"AI Document List Suite", 7};
inline constexpr SuiteId kRealBezierSuite{"AI Real Bezier Suite", 3};
inline constexpr SuiteId kShapeConstructionSuite{"AI Shape Construction Suite", 5};

/// The text engine's suites, in the order of the frame's list.
inline constexpr SuiteId kTextEngineSuites[] = {
    {"ATE ApplicationPaint Suite", 1},
    {"ATE CompFont Suite", 1},
    {"ATE CompFontClass Suite", 1},
    {"ATE CompFontClassSet Suite", 1},
    {"ATE CompFontComponent Suite", 1},
    {"ATE CompFontSet Suite", 1},
    {"ATE GlyphRun Suite", 1},
    {"ATE GlyphRunsIterator Suite", 1},
    {"ATE MojiKumi Suite", 1},
    {"ATE MojiKumiSet Suite", 1},
    {"ATE TextFrame Suite", 101},
    {"ATE TextFramesIterator Suite", 1},
    {"ATE TextLine Suite", 1},
    {"ATE TextLinesIterator Suite", 1},
    {"ATE TextResources Suite", 1},
    {"ATE ApplicationTextResources Suite", 1},
    {"ATE DocumentTextResources Suite", 101},
    {"ATE VersionInfo Suite", 1},
    {"ATE ArrayApplicationPaintRef Suite", 1},
    {"ATE ArrayReal Suite", 1},
    {"ATE ArrayBool Suite", 1},
    {"ATE ArrayInteger Suite", 1},
    {"ATE ArrayLineCapType Suite", 1},
    {"ATE ArrayFigureStyle Suite", 1},
    {"ATE ArrayLineJoinType Suite", 1},
    {"ATE ArrayWariChuJustification Suite", 1},
    {"ATE ArrayStyleRunAlignment Suite", 1},
    {"ATE ArrayAutoKernType Suite", 1},
    {"ATE ArrayBaselineDirection Suite", 1},
    {"ATE ArrayLanguage Suite", 1},
    {"ATE ArrayFontCapsOption Suite", 1},
    {"ATE ArrayFontBaselineOption Suite", 1},
    {"ATE ArrayFontOpenTypePositionOption Suite", 1},
    {"ATE ArrayUnderlinePosition Suite", 1},
    {"ATE ArrayStrikethroughPosition Suite", 1},
    {"ATE ArrayParagraphJustification Suite", 1},
    {"ATE ArrayArrayReal Suite", 1},
    {"ATE ArrayBurasagariType Suite", 1},
    {"ATE ArrayPreferredKinsokuOrder Suite", 1},
    {"ATE ArrayKinsokuRef Suite", 1},
    {"ATE ArrayMojiKumiRef Suite", 1},
    {"ATE ArrayMojiKumiSetRef Suite", 1},
    {"ATE ArrayTabStopsRef Suite", 1},
    {"ATE ArrayLeadingType Suite", 1},
    {"ATE ArrayFontRef Suite", 1},
    {"ATE ArrayGlyphID Suite", 1},
    {"ATE ArrayRealPoint Suite", 1},
    {"ATE ArrayRealMatrix Suite", 1},
    {"ATE CharFeatures Suite", 1},
    {"ATE CharInspector Suite", 1},
    {"ATE CharStyle Suite", 1},
    {"ATE CharStyles Suite", 1},
    {"ATE CharStylesIterator Suite", 1},
    {"ATE Find Suite", 1},
    {"ATE Font Suite", 1},
    {"ATE Glyph Suite", 1},
    {"ATE Glyphs Suite", 1},
    {"ATE GlyphsIterator Suite", 1},
    {"ATE Kinsoku Suite", 1},
    {"ATE KinsokuSet Suite", 1},
    {"ATE ParaFeatures Suite", 1},
    {"ATE Paragraph Suite", 1},
    {"ATE ParagraphsIterator Suite", 1},
    {"ATE ParaInspector Suite", 1},
    {"ATE ParaStyle Suite", 1},
    {"ATE ParaStyles Suite", 1},
    {"ATE ParaStylesIterator Suite", 1},
    {"ATE Spell Suite", 1},
    {"ATE Stories Suite", 1},
    {"ATE Story Suite", 1},
    {"ATE TabStop Suite", 1},
    {"ATE TabStops Suite", 1},
    {"ATE TabStopsIterator Suite", 1},
    {"ATE TextRange Suite", 1},
    {"ATE TextRanges Suite", 1},
    {"ATE TextRangesIterator Suite", 1},
    {"ATE TextRunsIterator Suite", 1},
    {"ATE WordsIterator Suite", 1},
};
static_assert(sizeof(kTextEngineSuites) / sizeof(SuiteId) == 78);

}  // namespace hostapi
