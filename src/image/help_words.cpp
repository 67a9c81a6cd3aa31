// The help of the words of images.
#include "image/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_disk, "disk image(id) poi(x,y) radius(r) col(r,g,b) paints a disk on an image", "image(1) dim(64,32) col(0,0,0); disk image(1) poi(32,16) radius(10) col(0,1,0)"},
    {KW_hsv, "hsv: a key word of hue, saturation and value; hsv vol(id)=h,s,v stores one", "cube(1); hsv vol(1)=0.5,1,1; hsv vol(1)"},
    {KW_image, "image(id) dim(nx,ny) col(r,g,b[,r2,g2,b2]) makes an image, four bytes a pixel; image(id) takes inv, luminance, rectangle, cut, tran, rota, dila, dup, ini, validate, speed; dim image(id) its size; write image(id) name(\"f.png\"), read image(id) name(\"f\")", "image(1) dim(64,32) col(1,0,0,0,0,1); dim image(1)"},
    {KW_interpol, "interpol(n) image(a,b) number(k) makes images k to k+n from image a to image b; traj(id) interpol(v1,v2,..) a trajectory of shapes", "image(1) dim(8,8) col(1,0,0); image(2) dim(8,8) col(0,0,1); interpol(3) image(1,2) number(10); dim image(12)"},
    {KW_luminance, "image(id) luminance turns an image grey, each pixel to its brightness; traj(id) luminance(..) animate(n) image(id) a trajectory of it", "image(1) dim(8,8) col(1,0.5,0); image(1) luminance"},
    key_word(KW_lut),
    {KW_pixel, "pixel: the sub-element word of the pixels of an image in the keys of properties, as vertex is of the vertices of a volume; no command of this version reads or writes pixels through it (pixel image(id) answers NIL)", "image(1) dim(2,2); pixel image(1)"},
    {KW_smooth, "smooth image(a,b) the 3 x 3 mean of image a into image b; smooth(n) image(a,b) an n x n box; smooth(w1,...,w9) image(a,b) any kernel", "image(1) dim(16,16) col(1,0,0); smooth image(1,3); dim image(3)"},
};

}  // namespace

void install_image_help() { help_register("Images", ENTRIES); }
