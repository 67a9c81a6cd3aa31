// `read image` and `write image`: images between image objects, the
// graphic window and files. Same form as the other graphic handlers.
#pragma once
#include <string>

#include "image/image_files.h"
#include "kernel/word.h"

int READ_IMAGE_b(word* s, const word* ob, word* st, const word* lim);
int WRITE_IMAGE_b(word* s, const word* ob, word* st, const word* lim);

// The file name of a command: `name`, with the `number` option put in it
// (offset added). False after a report.
bool nom_fichier_image(word* s, int offset, std::string& name);
// The format options a command gives: `format` (component order, or the
// compression flag as a number), `debug` (its value, 1 alone).
FormatOptions options_format(word* s);

// Bands of raw files. READ_IMAGE_RAW_LINE reads `number` lines from line
// `current` of the file into the last of the images `ids` (one or two),
// then moves on by `number`, wrapping to 0 past the last line; once the
// last band of a pass is read, a second image is copied to the first.
// The file name and the position are kept: with `name` empty, the next
// band of the kept file is read. 0, or -1 after a report.
int READ_IMAGE_RAW_LINE(const std::string& name, const int* ids, int nids, int current, int number);
// Writes lines current .. current+number-1 of the picture at their place
// in the raw file, made with a black picture of that size when it is
// missing or of another size. 0, or -1 after a report.
int WRITE_IMAGE_RAW_LINE(const std::string& name, const ImageView& p, int current, int number);
