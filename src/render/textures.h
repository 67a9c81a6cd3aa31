// Images as textures: an image gets its texture name on first use, and
// its pixels are sent again only when they changed since.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// Binds the image numbered `id` as the 2D texture; false (texturing off
// for what follows) when there is no such image with pixels.
bool lie_texture(int id);
// The image number of a facet in a `texture fac` value: a table of one
// block a facet, or a plain list; 0 when none.
int image_facette(const word* images, int facet);
// `texture fac`: binds the image of facet `facet` of the list, texturing
// off for a facet whose entry is 0 or missing.
void lie_texture_facette(const word* images, int facet);
// Forgets the names (the window that held them is gone).
void textures_oubliees();
// Gives back the names of images that are no longer in the image list.
void textures_orphelines();
