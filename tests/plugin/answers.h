// What the plug-in answers when a call on the host fails: one table for every test that fails
// calls.
#pragma once

#include "hostapi/codes.h"

namespace plugintest {

using hostapi::fourCC;

/// The code of the failing call.
inline constexpr hostapi::AIErr kCode = fourCC("TEST");

/// What else is true of a refused call.
enum Trait : unsigned {
  kLastOnly = 1,  // only refusing the function's last call gives this answer, the others 0
  kLeaks = 2,     // the refused call leaves something undestroyed in the host
  kSameArt = 4,   // the drawing is the same as without a fault
  kMakes = 8,     // carried out all the same, the call makes something that stays in the host
};

/// What a message is answered with when a call that the plug-in makes for it fails with `kCode`.
struct Row {
  const char* suite;
  const char* function;
  hostapi::AIErr answer;
  unsigned traits = 0;
};

/// The calls of "AI Go".
inline const Row kGoRows[] = {
    {"AI File Path Suite", "GetFullPath", kCode},
    {"AI File Path Suite", "Copy", kCode, kMakes},
    {"AI File Path Suite", "GetFileExtension", kCode},
    {"AI File Path Suite", "Set", kCode, kMakes},
    {"AI File Path Suite", "DeleteFilePath", 0, kLeaks | kSameArt},
    {"AI Unicode String Suite", "Initialize", kCode, kMakes},
    {"AI Unicode String Suite", "InitializeUTF16", kCode, kMakes},
    {"AI Unicode String Suite", "Append", kCode},
    {"AI Unicode String Suite", "GetChar", kCode},
    {"AI Unicode String Suite", "Compare", 0, kSameArt},
    {"AI Unicode String Suite", "Destroy", 0, kLeaks | kSameArt},
    {"AI Path Style Suite", "ImportStyles", fourCC("PARM")},
    {"AI Art Style Suite", "GetArtStyleByNameFromDocument", kCode},
    {"AI Art Style Suite", "AddNamedStyle", 0},
    {"AI Art Style Suite", "SetArtStyle", kCode, kLastOnly},
    {"AI Document Suite", "GetAIVersion", 0, kSameArt},
    {"AI Document Suite", "GetDocumentSetup", kCode},
    {"AI Document Suite", "SetDocumentRulerOrigin", kCode},
    {"AI Document Suite", "SetDocumentSetup", kCode},
    {"AI Layer Suite", "CountLayers", 0},
    {"AI Layer Suite", "GetFirstLayer", fourCC("PARM")},
    {"AI Layer Suite", "SetCurrentLayer", 0, kSameArt},
    {"AI Layer Suite", "SetLayerEditable", kCode},
    {"AI Layer Suite", "InsertLayer", kCode},
    {"AI Layer Suite", "GetNthLayer", 0},
    {"AI Layer Suite", "LayerHasArt", 0, kSameArt},
    {"AI Art Suite", "GetFirstArtOfLayer", 0, kSameArt},
    {"AI Art Suite", "NewArt", fourCC("CANT")},
    {"AI Path Suite", "SetPathSegmentCount", fourCC("CANT")},
    {"AI Path Suite", "SetPathSegments", fourCC("CANT")},
    {"AI Path Suite", "SetPathClosed", fourCC("CANT")},
    {"AI TabletData Suite", "SetTabletData", fourCC("CANT")},
    {"AI Art Set Suite", "NewArtSet", fourCC("PARM"), kLastOnly},
    {"AI Art Set Suite", "LayerArtSet", 0},
    {"AI Art Set Suite", "CountArtSet", kCode, kLastOnly},
    {"AI Art Set Suite", "IndexArtSet", fourCC("PARM"), kLastOnly},
};

/// The calls of "Startup" but for the acquisition of the suites.
inline const Row kStartRows[] = {
    {"SP Plug-ins Suite", "GetPluginName", 0},
    {"AI Notifier Suite", "AddNotifier", kCode},
    {"SP Access Suite", "AcquirePlugin", kCode, kMakes},
    {"AI Runtime Suite", "GetAppMajorVersion", 0},
    {"AI Runtime Suite", "GetAppMinorVersion", 0},
    {"AI File Format Suite", "AddFileFormat", kCode},
};

/// The calls of "Shutdown" but for the release of the suites.
inline const Row kEndRows[] = {{"SP Access Suite", "ReleasePlugin", kCode, kLeaks}};

}  // namespace plugintest
