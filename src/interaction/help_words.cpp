// The help of the words of the interaction loop, its menus and panels,
// and the tools.
#include "interaction/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_alphabet, "alphabet object(id)=\"keys\" with number object(id)=n..: a key typed in the window plays the sound of the same place", "object(1); alphabet object(1)=\"abc\"; alphabet object(1)"},
    {KW_brush, "brush(id) makes a brush of the palette tools; word brush(id)=v sets its properties", "brush(1); col brush(1)=1,0,0; col brush(1)"},
    {KW_interaction, "interaction starts the real-time loop, one image an idle call of the window, until Escape in the window; interaction time(n) n images, then the console; interaction func(\"f\") or func(n,\"f\") runs f in slot n of each image; interaction period(p) images a second; interaction cut(1) freezes, cut(0) one more image, cut(-1) runs; interaction STOP stops; interaction mouse the CONTINUE panel; interaction ascii(\"a\") func(\"f\") a key runs f; interaction interaction(\"tran\") a drag moves a volume; interaction message(\"text\") poi(x,y) a button", "interaction period(25)"},
    {KW_menu, "yes menu shows the menus; menu(id) makes a menu object; displ exec(\"Run\") poi(x,y) rectangle(r,g,b) frame mouse a text button", "menu(1)"},
    {KW_motif, "motif: a pattern; motif vol(id)=.. drawn in place of the facets with yes motif; network(id) motif(..) the inputs of a network", "cube(1); motif vol(1)=1; motif vol(1)"},
    {KW_mouse, "mouse: the pointer; yes mouse shows the cursor, no mouse hides it; interaction mouse the CONTINUE panel; device(n) ini(\"MOU\") reads it", "yes mouse"},
    {KW_palette, "palette: a key word of the colour palette tool of the panels (hue, saturation, value), a tool not built in this version; palette vol(id)=v stores a value and palette vol(id) reads it", "cube(1); palette vol(1)=1; palette vol(1)"},
    key_word(KW_pan),
    {KW_play, "play: the replay of recorded images (a tool of the panels not built in this version); interaction end play stops recording and replaying; play vol(id)=v stores a value as a key word", "cube(1); play vol(1)=1; play vol(1)"},
    {KW_pull, "pull: the manual motion that drags a vertex: interaction interaction(\"pull\")", "cube(1); pull vol(1)=1; pull vol(1)"},
    key_word(KW_put),
    {KW_scale, "scale(id) makes a scale (a gauge of the panels); word scale(id)=v sets its properties", "scale(1); col scale(1)=1,1,0; col scale(1)"},
    {KW_stock, "stock(id) makes a stock object, a store of recorded images for the play tool; write audio(id) stock(t) name(\"f\") the levels of a sound", "stock(1); list stock"},
};

}  // namespace

void install_interaction_help() { help_register("Interaction, menus, panels and tools", ENTRIES); }
