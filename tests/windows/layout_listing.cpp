// Prints sizes and offsets of the interface as this compiler lays it out, one "name number" a line.
// The numbers are compared with layout.txt, which was written by hand; one listing is made by each
// of the two compilers.
#include <cstddef>
#include <cstdio>

#include "hostapi/ai_art_set_suite.h"
#include "hostapi/ai_art_style_suite.h"
#include "hostapi/ai_art_suite.h"
#include "hostapi/ai_document_suite.h"
#include "hostapi/ai_file_format_suite.h"
#include "hostapi/ai_file_path_suite.h"
#include "hostapi/ai_layer_suite.h"
#include "hostapi/ai_notifier_suite.h"
#include "hostapi/ai_path_style_suite.h"
#include "hostapi/ai_path_suite.h"
#include "hostapi/ai_runtime_suite.h"
#include "hostapi/ai_tablet_data_suite.h"
#include "hostapi/ai_unicode_string_suite.h"
#include "hostapi/ai_user_suite.h"
#include "hostapi/messages.h"
#include "hostapi/sp_access_suite.h"
#include "hostapi/sp_basic_suite.h"
#include "hostapi/sp_plugins_suite.h"
#include "plugin/file_path.h"
#include "plugin/unicode_string.h"

namespace {

void print(const char* name, std::size_t number) {
  std::printf("%s %u\n", name, static_cast<unsigned>(number));
}

}  // namespace

using namespace hostapi;

#define SIZE(type) print("sizeof " #type, sizeof(type))
#define AT(type, member) print(#type "." #member, offsetof(type, member))

int main() {
  SIZE(void*);
  SIZE(AIErr);
  SIZE(SPErr);
  SIZE(AIBoolean);
  SIZE(SPBoolean);
  SIZE(AIBool8);
  SIZE(AIReal);
  SIZE(ASUnicode);
  SIZE(UTF32TextChar);
  SIZE(AICharacterEncoding);
  SIZE(AITabletDataType);
  SIZE(ai::UnicodeString);
  SIZE(ai::FilePath);

  SIZE(AIRealPoint);
  AT(AIRealPoint, h);
  AT(AIRealPoint, v);
  SIZE(AIRealRect);
  AT(AIRealRect, left);
  AT(AIRealRect, top);
  AT(AIRealRect, right);
  AT(AIRealRect, bottom);
  SIZE(AIDocumentSetup);
  AT(AIDocumentSetup, width);
  AT(AIDocumentSetup, height);
  AT(AIDocumentSetup, showPlacedImages);
  AT(AIDocumentSetup, outputResolution);
  AT(AIDocumentSetup, splitLongPaths);
  AT(AIDocumentSetup, useDefaultScreen);
  AT(AIDocumentSetup, compatibleGradients);
  AT(AIDocumentSetup, printTiles);
  AT(AIDocumentSetup, tileFullPages);
  SIZE(AIPathSegment);
  AT(AIPathSegment, p);
  AT(AIPathSegment, in);
  AT(AIPathSegment, out);
  AT(AIPathSegment, corner);
  SIZE(AITabletProfile);
  AT(AITabletProfile, offset);
  AT(AITabletProfile, value);
  SIZE(PlatformAddFileFormatData);
  AT(PlatformAddFileFormatData, type);
  AT(PlatformAddFileFormatData, title);
  AT(PlatformAddFileFormatData, titleOrder);
  AT(PlatformAddFileFormatData, extension);

  SIZE(SPMessageData);
  AT(SPMessageData, SPCheck);
  AT(SPMessageData, self);
  AT(SPMessageData, globals);
  AT(SPMessageData, basic);
  SIZE(SPInterfaceMessage);
  SIZE(SPAccessMessage);
  AT(SPAccessMessage, when);
  SIZE(AINotifierMessage);
  AT(AINotifierMessage, notifier);
  AT(AINotifierMessage, type);
  AT(AINotifierMessage, notifyData);
  SIZE(AIFileFormatMessage);
  AT(AIFileFormatMessage, fileFormat);
  AT(AIFileFormatMessage, option);
  AT(AIFileFormatMessage, extendedData);
  AT(AIFileFormatMessage, actionParm);
  AT(AIFileFormatMessage, filePath);
  AT(AIFileFormatMessage, operationOptions);
  AT(AIFileFormatMessage, rangeHandle);
  AT(AIFileFormatMessageWithFileRecord, fileRecord);
  AT(AIFileFormatMessageWithFileRecord, option);
  AT(AIFileFormatMessageWithFileRecord, extendedData);
  AT(AIFileFormatMessageWithFileRecord, actionParm);
  AT(AIFileFormatMessageWithFileRecord, filePath);

  SIZE(SPBasicSuite);
  AT(SPBasicSuite, AcquireSuite);
  AT(SPBasicSuite, ReleaseSuite);
  AT(SPBasicSuite, IsEqual);
  AT(SPBasicSuite, AllocateBlock);
  AT(SPBasicSuite, FreeBlock);
  AT(SPBasicSuite, ReallocateBlock);
  AT(SPBasicSuite, Undefined);
  SIZE(SPAccessSuite);
  AT(SPAccessSuite, AcquirePlugin);
  AT(SPAccessSuite, ReleasePlugin);
  SIZE(SPPluginsSuite);
  AT(SPPluginsSuite, GetPluginName);
  SIZE(AINotifierSuite);
  AT(AINotifierSuite, AddNotifier);
  SIZE(AIUserSuite);
  AT(AIUserSuite, ErrorAlert);
  SIZE(AIFilePathSuite);
  AT(AIFilePathSuite, NewFilePath);
  AT(AIFilePathSuite, DeleteFilePath);
  AT(AIFilePathSuite, Copy);
  AT(AIFilePathSuite, Set);
  AT(AIFilePathSuite, GetFileExtension);
  AT(AIFilePathSuite, GetFullPath);
  SIZE(AIUnicodeStringSuite);
  AT(AIUnicodeStringSuite, Initialize);
  AT(AIUnicodeStringSuite, InitializeUTF16);
  AT(AIUnicodeStringSuite, InitializeUTF32Char);
  AT(AIUnicodeStringSuite, Destroy);
  AT(AIUnicodeStringSuite, Append);
  AT(AIUnicodeStringSuite, AppendSubString);
  AT(AIUnicodeStringSuite, Assign);
  AT(AIUnicodeStringSuite, Copy);
  AT(AIUnicodeStringSuite, GetChar);
  AT(AIUnicodeStringSuite, Clear);
  AT(AIUnicodeStringSuite, Compare);
  SIZE(AIFileFormatSuite);
  AT(AIFileFormatSuite, AddFileFormat);
  SIZE(AIDocumentSuite);
  AT(AIDocumentSuite, SetDocumentRulerOrigin);
  AT(AIDocumentSuite, GetDocumentSetup);
  AT(AIDocumentSuite, SetDocumentSetup);
  AT(AIDocumentSuite, OlderGetDocumentSetup);
  AT(AIDocumentSuite, OlderSetDocumentSetup);
  AT(AIDocumentSuite, GetAIVersion);
  SIZE(AILayerSuite);
  AT(AILayerSuite, CountLayers);
  AT(AILayerSuite, GetNthLayer);
  AT(AILayerSuite, SetCurrentLayer);
  AT(AILayerSuite, GetFirstLayer);
  AT(AILayerSuite, InsertLayer);
  AT(AILayerSuite, SetLayerEditable);
  AT(AILayerSuite, LayerHasArt);
  SIZE(AIArtSuite);
  AT(AIArtSuite, NewArt);
  AT(AIArtSuite, GetFirstArtOfLayer);
  SIZE(AIPathSuite);
  AT(AIPathSuite, SetPathSegmentCount);
  AT(AIPathSuite, SetPathSegments);
  AT(AIPathSuite, SetPathClosed);
  SIZE(AIPathStyleSuite);
  AT(AIPathStyleSuite, ImportStyles);
  SIZE(AIArtStyleSuite);
  AT(AIArtStyleSuite, SetArtStyle);
  AT(AIArtStyleSuite, AddNamedStyle);
  AT(AIArtStyleSuite, GetArtStyleByNameFromDocument);
  SIZE(AITabletDataSuite);
  AT(AITabletDataSuite, SetTabletData);
  SIZE(AIArtSetSuite);
  AT(AIArtSetSuite, NewArtSet);
  AT(AIArtSetSuite, CountArtSet);
  AT(AIArtSetSuite, IndexArtSet);
  AT(AIArtSetSuite, LayerArtSet);
  SIZE(AIRuntimeSuite);
  AT(AIRuntimeSuite, GetAppMajorVersion);
  AT(AIRuntimeSuite, GetAppMinorVersion);
}
