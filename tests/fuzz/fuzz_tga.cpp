// libFuzzer target: any bytes read as a tga file.
#include "fuzz_image.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) { return fuzz_decoder(lire_image_tga, data, size); }
