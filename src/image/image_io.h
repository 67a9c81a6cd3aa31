// Image files on disk and image objects in memory: the one open helper
// with its search path, whole-file reading and writing, and the moves
// between decoded pictures and image objects.
#pragma once
#include <string>

#include "image/image_files.h"
#include "kernel/objet.h"
#include "platform/files.h"

// `name` inside `folder` (as given when the folder is empty).
std::string dans_dossier(const std::string& folder, const std::string& name);

// Opens an image file for reading: the name is searched as given, then in
// the `ima=`, `env=` and `exe=` folders, and the path found is left in
// *path; a name found nowhere reports "name: NOT FOUND". Null after the
// report.
OsFile* ouvre_image(const std::string& name, std::string* path);
// The whole file; false after a report.
bool lit_image_fichier(const std::string& name, Bytes& out, std::string* path);
// Writes the bytes as the whole file, safely; false after the message
// (kernel/file_out.h).
bool ecrit_image_fichier(const std::string& name, const Bytes& bytes);

// The picture an image object holds; px null for an image without pixels.
ImageView picture_of(Objet* o);
// Puts a decoded picture in an image: the pixel block is kept when the
// size is the same (so that the bytes the file did not give stay as they
// were) and made anew otherwise. -1 after a report.
int pose_image(Objet* o, const ImageData& d);

// Nearest-pixel resampling of a picture to nw x nh.
Bytes reechantillonne(const ImageView& p, int nw, int nh);
// The rectangle of w x h pixels at (x, y) of a picture, clipped to it;
// false when nothing of it lies inside.
bool decoupe(const ImageView& p, int x, int y, int w, int h, ImageData& out);
