// What plays into the primary buffer: the beep path's tones and the
// sounds that play along the animation.
#pragma once
#include "kernel/objet.h"

// The hook of the beep path: a sine of f Hz for `ms` milliseconds with a
// short fade at both ends, queued after the last tone. False when no
// device can play it (the terminal's bell rings instead).
bool bip_primaire(float f, int ms);

// The sounds of one image: debut_image_sons() opens the device on demand
// and gives the place of this image (-1: nothing is played); each
// playing sound adds the stretch it covers, from `position` over
// `vitesse` images, in the time of one image; fin_image_sons() moves the
// place on by one image.
long long debut_image_sons();
void mixe_son(Objet* o, float position, float vitesse, long long at);
void fin_image_sons(long long at);

// The beep hook registered, and both devices freed at the process's end.
void install_primary_play();
