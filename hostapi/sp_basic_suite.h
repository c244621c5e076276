// SP Basic suite, version 4: comes with every message, is never acquired.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct SPBasicSuite {
  /// Gives the table of the suite, valid until it is released; 'S!Fd' when there is no such name
  /// and version. Every acquisition is to be released once.
  SPErr (*AcquireSuite)(const char* name, std::int32_t version, const void** suite);
  SPErr (*ReleaseSuite)(const char* name, std::int32_t version);
  SPBoolean (*IsEqual)(const char* a, const char* b);
  SPErr (*AllocateBlock)(std::size_t size, void** block);
  SPErr (*FreeBlock)(void* block);
  SPErr (*ReallocateBlock)(void* block, std::size_t size, void** newBlock);
  SPErr (*Undefined)();
};
HOSTAPI_SLOT(SPBasicSuite, AcquireSuite, 0);
HOSTAPI_SLOT(SPBasicSuite, ReleaseSuite, 1);
HOSTAPI_SLOT(SPBasicSuite, IsEqual, 2);
HOSTAPI_SLOT(SPBasicSuite, AllocateBlock, 3);
HOSTAPI_SLOT(SPBasicSuite, FreeBlock, 4);
HOSTAPI_SLOT(SPBasicSuite, ReallocateBlock, 5);
HOSTAPI_SLOT(SPBasicSuite, Undefined, 6);
HOSTAPI_SLOT_COUNT(SPBasicSuite, 7);

}  // namespace hostapi
