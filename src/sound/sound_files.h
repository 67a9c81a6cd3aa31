// Sounds and their files: WAV in and out, the header, the derived
// format block and its two printed forms.
#pragma once
#include <string>

#include "kernel/objet.h"
#include "kernel/word.h"

// The file's bytes into sound `id` (an existing one removed first):
// Size the file size, Header 60 until the header is read. Null after a
// report; a file that is no sound leaves no object.
Objet* READ_AUDIO(int id, const std::string& name);
// Fields and `meta` from the header of the file image; the object is
// removed when the image is not a sound. 0, or -1 after the report.
int READ_WAV_HEADER(Objet* o, const std::string& name);
// The file image to a file. 0, or -1 after a report.
int WRITE_AUDIO(Objet* o, const std::string& name);
// The `dim` block again from the fields, the file image grown to Size.
// The sample size in Nb_octet is taken as bytes (1, 2, 4) or bits (8,
// 16, 32). Frames and seconds given back. 0, or -1 after a report.
int GET_DIM_AUDIO(Objet* o, long long* samples = nullptr, double* time = nullptr);
int EDIT_AUDIO_1(Objet* o);
int EDIT_DIM_AUDIO_1(Objet* o);
// A silent sound of the generated form: 44100 Hz, 16 bits, `channels`,
// `seconds` long. Null after a report.
Objet* GENERATE_AUDIO_DIM(int id, float seconds, int channels);
// The name of the format tag.
const char* nom_format(int format);
