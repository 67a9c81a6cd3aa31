// libFuzzer target: any bytes read as a bmp file.
#include "fuzz_image.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) { return fuzz_decoder(bmp_read, data, size); }
