// SP Basic suite, version 4: comes with every message and is never acquired.
#pragma once

#include "hostapi/types.h"

namespace hostapi {

struct SPBasicSuite {
  /// Gives the suite's table, which belongs to the host and is valid until it is released; 'S!Fd'
  /// when there is no such name and version. Each acquisition is released once.
  SPErr (*AcquireSuite)(const char* name, std::int32_t version, const void** suite);
  /// Releases one acquisition of the same name and version; the table must not be used
  /// afterwards.
  SPErr (*ReleaseSuite)(const char* name, std::int32_t version);
  /// 1 when the two zero-terminated texts are equal byte for byte.
  SPBoolean (*IsEqual)(const char* a, const char* b);
  /// Gives a new block of `size` bytes, which the caller owns and frees with FreeBlock.
  SPErr (*AllocateBlock)(std::size_t size, void** block);
  /// Frees a block from AllocateBlock or ReallocateBlock.
  SPErr (*FreeBlock)(void* block);
  /// Gives a block of the new size with the old contents; on success the old block is freed.
  SPErr (*ReallocateBlock)(void* block, std::size_t size, void** newBlock);
  /// Stands in for functions that the host does not have; always fails.
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
