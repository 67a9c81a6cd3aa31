// The sound commands' rows of the graphic dispatch: `read`, `write`,
// `edit`, `dim`, `generate`, `smooth`, `stock` and `inv` take a sound
// when their command names `audio`.
#pragma once

void install_sound_commands();
// The shapes of the edits that make sounds from sounds and link them to
// the scene (sound_commands_edit.cpp); called by install_sound_commands.
void install_sound_edit_commands();
// The shapes that read and write the sounds' sub-properties
// (sound_props.cpp); called by install_sound_commands.
void install_sound_property_commands();
