// The window's, the views' and the display's rows of the graphic dispatch.
#include "kernel/keywords.h"
#include "render/commands.h"
#include "scene/graphic.h"

void install_render_commands() {
  register_graphic_handler({KW_win}, WIN_b);
  register_graphic_handler({KW_graphic}, GRAPHIC_b);
  register_graphic_handler({KW_back}, BACK_b);
  register_graphic_handler({KW_screen}, SCREEN_b);
  register_graphic_handler({KW_zbuf}, ZBUF_b);
  register_graphic_handler({KW_view}, SET_VIEW_b);
  register_graphic_handler({KW_eye, KW_aim}, AIM_EYE_b);
  register_graphic_handler({KW_foc, KW_roll}, FOC_ROLL_b);
  register_graphic_handler({KW_pers}, PERS_b);
  register_graphic_handler({KW_stereo}, STEREO_b);
  register_graphic_handler({KW_depth}, DEPTH_b);
  register_graphic_handler({KW_displ}, DISPL_b);
}
