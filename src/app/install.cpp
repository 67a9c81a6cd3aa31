#include "app/install.h"

#include "adaptive/net_audio.h"
#include "adaptive/genetic.h"
#include "adaptive/network.h"
#include "adaptive/help_words.h"
#include "animation/help_words.h"
#include "device/device_command.h"
#include "device/help_words.h"
#include "image/help_words.h"
#include "image/image_command.h"
#include "interaction/help_words.h"
#include "persist/object_file.h"
#include "render/commands.h"
#include "render/help_words.h"
#include "scene/graphic.h"
#include "sound/live_commands.h"
#include "sound/primary_play.h"
#include "sound/sound_commands.h"
#include "scene/help_words.h"
#include "sound/help_words.h"

void install_graphic_commands() {
  static bool installed = false;  // each row once, whoever calls first
  if (installed) return;
  installed = true;
  install_scene_commands();
  install_render_commands();
  install_image_commands();
  install_object_commands();
  install_device_commands();
  // The live sound first: its property paths on volumes (`speed audio
  // vol(1)`) are tried before the sound objects' shapes of the same words.
  install_live_audio();
  install_primary_play();
  install_sound_commands();
  install_network();
  install_audio_network();
  install_genetic();
  // The help of the graphic words, in the order `help` lists the groups.
  install_scene_help();
  install_render_help();
  install_animation_help();
  install_interaction_help();
  install_image_help();
  install_sound_help();
  install_adaptive_help();
  install_device_help();
}
