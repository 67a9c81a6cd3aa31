// The help of the words of the window, the views, the lights and the
// display of volumes.
#include "render/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_above, "interaction above puts the eye of the view above the scene, at (0,-896,1), looking at the origin with foc 0.825 (above, below, front, behind)", "interaction above"},
    {KW_aim, "aim(x,y,z) the point the current view looks at; aim alone reads it; aim view(id)=x,y,z that of a view made by view(id); aim light(id)=.. a light's", "aim(0,0,0)"},
    {KW_ambiance, "ambiance vol(id)=a the ambient part of a volume's lighting; ambiance light(id)=r,g,b a light's ambient colour", "cube(1) dim(10); ambiance vol(1)=0.3; ambiance vol(1)"},
    {KW_back, "back(r,g,b) the background colour that screen clears to; back alone reads it; back ini the start-up colour", "back(0,0,0.2)"},
    {KW_behind, "behind: the facets turned away; no behind leaves them out of the drawing (lighting is one-sided), yes behind draws them; behind vol(id)=1 for one volume; interaction behind puts the eye behind the scene, at (0,0,896)", "no behind"},
    {KW_below, "interaction below puts the eye of the view below the scene, at (0,896,1), looking at the origin with foc 0.825 (above, below, front, behind)", "interaction below"},
    {KW_bitmap, "bitmap: the switch of the bitmap drawing of images; yes bitmap, no bitmap; read image name(\"f\") bitmap", "no bitmap"},
    {KW_camera, "camera(values) the keyword's own current values, set and read back; camera alone reads them", "camera"},
    key_word(KW_center),
    {KW_clip, "clip: the switch of back-face culling; yes clip culls the facets turned away, no clip draws both sides", "no clip"},
    {KW_col, "col(r,g,b) the current colour; col vol(id)=r,g,b a volume's colour, col fac(f) vol(id)= one facet's, col vertex(n) vol(id)= one vertex's; col vol(id) reads it; col light(id)=.. a light's; col(..) as an option of image, disk and stereo", "cube(1) dim(10); col vol(1)=1,0.5,0; col vol(1)"},
    {KW_depth, "depth: the depth colouring of images (its current values); depth audio(id) the depth of sound objects", "depth"},
    {KW_displ, "displ draws every volume in every view in use, displ vol(ids) those volumes; displ image(ids) draws images now; displ vol(id)=n, displ view(id)=n, displ light(id)=n set the displ word of objects (0: out of use), displ view(id) reads it; displ image(id)=1 lays an image over each display; displ exec(\"text\") poi(x,y) rectangle(r,g,b) frame [mouse] a text button", "cube(1) dim(10); displ vol(1)"},
    key_word(KW_draw),
    {KW_eye, "eye(x,y,z) the place of the current view's eye; eye alone reads it; eye view(id)=x,y,z that of a view made by view(id); light(id) eye(x,y,z) places a light", "eye(0,0,-100)"},
    {KW_foc, "foc(f) the focal of the current view (multiplies the 57.75 degree aperture); foc alone reads it; foc view(id)=f that of a view made by view(id)", "foc(1.5)"},
    {KW_fog, "yes fog turns the fog on; fog zbuf vol(id)=r,g,b,start,end the fog's colour and depths; fog(id) makes a fog object", "cube(1); fog zbuf vol(1)=0.5,0.5,0.5,100,500; fog zbuf vol(1)"},
    {KW_font, "font: the font of texts; font message vol(id)=n the font of a volume's label", "cube(1); font message vol(1)=1; font message vol(1)"},
    {KW_frame, "frame: an option of text buttons, a frame around the text: displ exec(\"Run\") poi(x,y) rectangle(r,g,b) frame; col frame vol(id)=r,g,b its colour", "cube(1); col frame vol(1)=1,1,1; col frame vol(1)"},
    {KW_front, "interaction front puts the eye of the view in front of the scene, at (0,0,-896), looking at the origin with foc 0.825 (above, below, front, behind)", "interaction front"},
    {KW_graphic, "graphic(w,h,x,y) the window's size and place; graphic(\"glEnable(GL_FOG)\") a few OpenGL calls by name", "graphic(\"glDisable(GL_FOG)\")"},
    {KW_illum, "illum(m,d,s,sh,t) the current illumination; yes illum lights the scene; illum vol(id)=m,d,s,sh,t a volume's: mode 0 wire frame, 1 a normal a facet, 2 a normal a vertex, diffuse, specular, shininess, transparency", "cube(1) dim(10); illum vol(1)=1,0.8,0.2,10,0; illum vol(1)"},
    key_word(KW_left),
    {KW_light, "light(id) eye(x,y,z) col(r,g,b) makes a light (the start-up light stands only while there is none); col light(id)=.., eye light(id)=.. change it; rem light(id) removes it", "light(1) eye(100,-100,-100) col(1,1,1); col light(1)"},
    key_word(KW_motionblur),
    {KW_pers, "pers(1) perspective, pers(0) orthographic (scene units are window pixels, origin mid-window); pers alone reads it", "pers(1)"},
    {KW_rectangle, "rectangle(r,g,b): an option of text buttons, the colour of the box behind the text: displ exec(\"Run\") poi(x,y) rectangle(r,g,b); image(id) rectangle(..) a part of an image", "cube(1); rectangle vol(1)=1; rectangle vol(1)"},
    key_word(KW_right),
    {KW_roll, "roll(a) the roll of the current view about its line of sight; roll alone reads it; roll view(id)=a that of a view made by view(id)", "roll(0)"},
    {KW_screen, "screen clears the window to the background; screen(r,g,b) to that colour; screen image(id) clears images", "screen"},
    {KW_see, "see: the object of the current text; see as an option starts the loop in watching mode: interaction see", "interaction see"},
    {KW_shadow, "shadow vol(id)=.. the shadow of a volume: shadow col vol(id)=r,g,b its colour, shadow poi vol(id)=x,y,z,.. its plane", "cube(1); shadow col vol(1)=0.2,0.2,0.2; shadow col vol(1)"},
    {KW_spe, "spe light(id)=r,g,b the specular colour of a light; spe vol(id)=.. stores a volume's", "light(1) eye(0,0,-100); spe light(1)=1,1,1; spe light(1)"},
    {KW_stereo, "stereo [eye(x,y,z)] [aim(x,y,z)] dist(d) [col(r,g,b) col(r,g,b)]: two views, red and green, for glasses", "stereo eye(0,0,-1000) dist(60)"},
    {KW_text, "text: the text property of an object; text vol(id)=\"words\" stores one", "cube(1); text vol(1)=\"a cube\"; text vol(1)"},
    {KW_texture, "texture vol(id)=n lays image n on the volume (with yes texture); texture fac vol(id)=.. per facet; transp texture vol(id) the transparency of each pass", "image(3) dim(16,16) col(1,0,0); ball(1) dim(10); texture vol(1)=3; texture vol(1)"},
    {KW_transp, "transp(t) the current transparency (the fifth illumination value); transp vol(id)=t a volume's; matrix(m) transp transposes a matrix", "transp(0.5)"},
    {KW_video, "interaction video name(\"shot\") format(\"png\") records every image the loop draws from its next image on, one file each: shot0001.png, shot0002.png ...; format(\"mp4\") or format(\"webm\") one film through the ffmpeg program; interaction video(n) name(..) n images only; interaction video the images recorded; interaction end video stops; dim(\"video\") of win is 768 by 576", "interaction video"},
    {KW_view, "view(id) makes or selects a view drawn over the window; eye view(id)=x,y,z, aim view(id)=.., foc view(id)=..; view(id) displ(0) puts it out of use", "view(2); eye view(2)=0,0,-200; eye view(2)"},
    {KW_win, "win: the window; win(x,y,nx,ny) as an option of write image crops the picture; win alone reads the window's settings", "win"},
    {KW_zbuf, "zbuf(n) the depth buffer mode; zbuf alone reads it; fog zbuf vol(id)=.. the fog depths", "zbuf"},
    key_word(KW_zoom),
};

}  // namespace

void install_render_help() { help_register("Display, views and lights", ENTRIES); }
