// The CRC-32 of the journal's long arrays.
#pragma once

#include <cstddef>
#include <cstdint>

namespace embedded {

/// The CRC-32 of ISO 3309 and of zip files (polynomial 0x04C11DB7, reflected): of the nine bytes
/// "123456789" it is 0xCBF43926.
std::uint32_t crc32(const void* data, std::size_t size);

}  // namespace embedded
