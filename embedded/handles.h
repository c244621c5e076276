// Handles: what the plug-in sees of layers, paths, styles and the rest.
#pragma once

#include <bit>
#include <cstdint>
#include <optional>
#include <string>

namespace embedded {

enum class HandleKind : std::uint8_t {
  plugin,
  access,
  document,
  layer,
  group,
  path,
  style,
  set,
  format,
  notifier,
  string,
  filePath,
};

/// A handle is a number in the form of a pointer: its kind and its place among the handles of that
/// kind, counted from 1. It points nowhere, so dereferencing it crashes, and it is never reused, so
/// a stale handle can be told from a live one.
struct HandleNumber {
  HandleKind kind;
  std::size_t number;
};

namespace handles {

// A mark in the top bits, the kind, the number, and zeros in the lowest bits. No address of a
// 64-bit process begins like this one, and none of a 32-bit one in the browser, where memory ends
// at 2 GB: there are no more objects of a kind in it than 24 bits count.
#ifdef __EMSCRIPTEN__
inline constexpr std::uintptr_t kMark = 0xB;
inline constexpr unsigned kMarkShift = 28;
inline constexpr unsigned kKindShift = 24;
inline constexpr unsigned kNumberShift = 0;
#else
inline constexpr std::uintptr_t kMark = 0xB05E;
inline constexpr unsigned kMarkShift = 48;
inline constexpr unsigned kKindShift = 40;
inline constexpr unsigned kNumberShift = 4;
#endif
inline constexpr std::uintptr_t kKindMask = (std::uintptr_t{1} << (kMarkShift - kKindShift)) - 1;
inline constexpr std::uintptr_t kNumberMask =
    (std::uintptr_t{1} << (kKindShift - kNumberShift)) - 1;
inline constexpr std::uintptr_t kZeros = (std::uintptr_t{1} << kNumberShift) - 1;

}  // namespace handles

template <class Handle>
Handle toHandle(HandleKind kind, std::size_t number) {
  return std::bit_cast<Handle>(handles::kMark << handles::kMarkShift |
                               static_cast<std::uintptr_t>(kind) << handles::kKindShift |
                               static_cast<std::uintptr_t>(number) << handles::kNumberShift);
}

/// Nothing for null and for anything that does not have the form of a handle.
inline std::optional<HandleNumber> fromHandle(const void* handle) {
  const auto bits = std::bit_cast<std::uintptr_t>(handle);
  const auto kind = static_cast<std::uint8_t>(bits >> handles::kKindShift & handles::kKindMask);
  const std::uintptr_t number = bits >> handles::kNumberShift & handles::kNumberMask;
  if (bits >> handles::kMarkShift != handles::kMark) return std::nullopt;
  if (kind > static_cast<std::uint8_t>(HandleKind::filePath) || number == 0 ||
      (bits & handles::kZeros) != 0) {
    return std::nullopt;
  }
  return HandleNumber{static_cast<HandleKind>(kind), static_cast<std::size_t>(number)};
}

/// Its place among the handles of `kind`, from 1; 0 when it is not one of them.
inline std::size_t numberOf(const void* handle, HandleKind kind) {
  const std::optional<HandleNumber> found = fromHandle(handle);
  return found && found->kind == kind ? found->number : 0;
}

/// A handle's name, such as "path:3"; empty for anything that is not a handle.
std::string handleName(const void* handle);

}  // namespace embedded
