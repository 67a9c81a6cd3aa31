// The sound commands' rows of the graphic dispatch: `read`, `write`,
// `edit`, `dim`, `generate`, `smooth`, `stock` and `inv` take a sound
// when their command names `audio`.
#pragma once

void install_sound_commands();
