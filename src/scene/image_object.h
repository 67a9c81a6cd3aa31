// Image objects: a picture held in memory. The record's owner words hold
// its size, plane count and display flags; its `image` property holds the
// pixel block (tag IMAGE), four bytes a pixel in the order R, G, B, A,
// rows following each other with no padding, first row first.
#pragma once
#include <cstdint>

#include "kernel/keywords.h"
#include "kernel/objet.h"
#include "kernel/word.h"

// The owner words of an image record.
// IW_VERSION changes at each access that may write the pixels, so that a
// copy elsewhere (a texture) knows when to follow.
enum ImageWord { IW_NX = 0, IW_NY = 1, IW_NZ = 2, IW_VISIBLE = 3, IW_DISPLAYED = 4, IW_VERSION = 6 };

constexpr int IMAGE_DEFAULT_SIZE = 128;

inline int image_nx(const Objet* o) { return o->work[IW_NX]; }
inline int image_ny(const Objet* o) { return o->work[IW_NY]; }
inline int image_nz(const Objet* o) { return o->work[IW_NZ] > 0 ? o->work[IW_NZ] : 1; }
inline bool image_visible(const Objet* o) { return o->work[IW_VISIBLE] != 0; }
// The displ word of any object: an image's Visible word, else `valid`.
inline int& mot_displ(Objet* o) { return o->kind == KW_image ? o->work[IW_VISIBLE] : o->valid; }

// A zeroed pixel block of nx*ny*nz pixels: np nx*ny*nz, dimp 4 (bytes a
// pixel), one word a pixel. Null after a report of the byte count when
// the size is not positive or memory is short.
bloc bloc_image(int nx, int ny, int nz);
// The bytes of a pixel block.
inline uint8_t* octets(bloc b) { return reinterpret_cast<uint8_t*>(b + 4); }
inline const uint8_t* octets(const word* b) { return reinterpret_cast<const uint8_t*>(b + 4); }

// The pixel block of an image, or null when it has none of its size.
// Both mark the pixels as changed.
bloc pixels_bloc(Objet* o);
// Its bytes, or null.
uint8_t* pixels_image(Objet* o);
// The pixel block for reading only: the pixels are not marked.
const word* pixels_lecture(const Objet* o);

// SET_DIM_IMAGE: a fresh zeroed pixel block of nx by ny (nz planes) in
// place of the old one, and the size in the record. 0, or -1 after a
// report (the old block then stays).
int SET_DIM_IMAGE(Objet* o, int nx, int ny, int nz = 1);
// GET_DIM_IMAGE: the size in the record; false for an image without
// pixels.
bool GET_DIM_IMAGE(Objet* o, int* nx, int* ny);
// The previous copy of the pixels (key -image), made or re-made to the
// image's size; `copy` fills it with the current pixels.
bloc pixels_precedents(Objet* o, bool copy);

// set_type_dynamique: an image of type `dynamic` is stepped by the
// dynamics (its pixels' colours move under their speed and forces). `on`
// false takes the type away.
void set_type_dynamique(Objet* o, bool on = true);
inline bool image_dynamique(const Objet* o) { return o->subkind == KW_dynamic; }

// The image chain's head, and lookups in it.
Objet* chaine_images();
Objet* image_numero(int id);
// The image numbered `id` (or named `name` when id is 0 and name set),
// made with the default size when absent. Null after a report.
Objet* image_ou_cree(int id, const char* name);
