#include "app/install.h"

#include "adaptive/network.h"
#include "device/device_command.h"
#include "image/image_command.h"
#include "persist/object_file.h"
#include "render/commands.h"
#include "scene/graphic.h"
#include "sound/sound_commands.h"

void install_graphic_commands() {
  static bool installed = false;  // each row once, whoever calls first
  if (installed) return;
  installed = true;
  install_scene_commands();
  install_render_commands();
  install_image_commands();
  install_object_commands();
  install_device_commands();
  install_sound_commands();
  install_network();
}
