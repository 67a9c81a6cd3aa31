// PNG pictures of one size made one after the other with no allocation:
// the compressor and the buffers are taken once, when the size is set.
#pragma once
#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <vector>

struct PngFrames {
  int w = 0, h = 0;
  z_stream z{};
  bool ready = false;
  std::vector<uint8_t> rows;  // filtered rows: one filter byte, then RGB
  std::vector<uint8_t> file;  // the PNG file being made
};

// Takes the compressor and the buffers for pictures of w by h; false
// when the memory cannot be had.
bool png_frames_start(PngFrames& f, int w, int h);
// Encodes RGB pixels, rows from the bottom as OpenGL reads them, into
// f.file; returns its length (0 on failure).
size_t png_frames_encode(PngFrames& f, const uint8_t* rgb);
void png_frames_end(PngFrames& f);
