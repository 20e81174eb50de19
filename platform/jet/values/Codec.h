// SPDX-License-Identifier: MIT
// Little-endian numbers in bytes that come from a file. Two families: the checked ones (U8, U16 ...) throw a jet::Error
// for a read outside the span; LoadU16 ... are for ranges that were checked before.
#pragma once

#include "platform/jet/values/Bytes.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace jet {

static_assert(std::endian::native == std::endian::little, "numbers are copied in the file's byte order");

template <typename Number>
Number Load(const std::uint8_t* at) {
  Number number;
  std::memcpy(&number, at, sizeof number);
  return number;
}

template <typename Number>
void Store(std::uint8_t* at, Number number) {
  std::memcpy(at, &number, sizeof number);
}

inline std::uint16_t LoadU16(const std::uint8_t* at) {
  return Load<std::uint16_t>(at);
}
inline std::uint32_t LoadU32(const std::uint8_t* at) {
  return Load<std::uint32_t>(at);
}

inline std::uint32_t LoadU24BigEndian(const std::uint8_t* at) {
  return std::uint32_t{at[0]} << 16 | std::uint32_t{at[1]} << 8 | at[2];
}
inline std::uint32_t LoadU32BigEndian(const std::uint8_t* at) {
  return std::uint32_t{at[0]} << 24 | LoadU24BigEndian(at + 1);
}

// `length` bytes of `bytes` from `at` on. Throws Damage when they reach outside.
ByteView Part(ByteView bytes, std::size_t at, std::size_t length);

inline std::uint8_t U8(ByteView bytes, std::size_t at) {
  return Part(bytes, at, 1)[0];
}
inline std::uint16_t U16(ByteView bytes, std::size_t at) {
  return LoadU16(Part(bytes, at, 2).data());
}
inline std::uint32_t U32(ByteView bytes, std::size_t at) {
  return LoadU32(Part(bytes, at, 4).data());
}

}  // namespace jet
