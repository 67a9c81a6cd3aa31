// Little-endian fields of the binary picture headers.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

inline uint32_t get_le16(const uint8_t* p) { return p[0] | p[1] << 8; }
inline uint32_t get_le32(const uint8_t* p) { return get_le16(p) | get_le16(p + 2) << 16; }

inline void put_le16(std::vector<uint8_t>& out, size_t at, uint32_t v) {
  out[at] = static_cast<uint8_t>(v);
  out[at + 1] = static_cast<uint8_t>(v >> 8);
}
inline void put_le32(std::vector<uint8_t>& out, size_t at, uint32_t v) {
  put_le16(out, at, v & 0xffff);
  put_le16(out, at + 2, v >> 16);
}
