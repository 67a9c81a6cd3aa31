// The bitmap and targa writers: pixels of four bytes R, G, B, A, rows in
// memory order (the first row is the picture's bottom for a window).
#pragma once
#include <cstdint>
#include <string>
#include <vector>

// The file image of a 24-bit bitmap: 54 header bytes, then the rows with
// no padding to four bytes; `format` names the memory components written
// in file order ("BGR" by default). Empty for an unknown format.
std::vector<uint8_t> bmp_bytes(const uint8_t* rgba, int w, int h, const char* format);
// The file image of a 32-bit targa of type 2: 18 header bytes, then each
// pixel as B, G, R, A.
std::vector<uint8_t> tga_bytes(const uint8_t* rgba, int w, int h);
// The writer of a file name by its extension ("bmp", "BMP", "tga",
// "TGA"): 'b', 't', or 0 when there is none such.
char writer_of(const std::string& name);
