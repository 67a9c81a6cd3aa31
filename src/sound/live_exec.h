// EXEC_AUDIO: the volumes moved by the live sound at each image.
#pragma once
#include "kernel/objet.h"

// The loop's audio step: with the capture on, `audio exec` given and the
// `audio` flag not negative, one poll and EXEC_AUDIO_1 on each volume
// named (all of them with no list). Always 0: a failed poll keeps the
// last values.
int EXEC_AUDIO();
// One volume from the current levels. It reads, from the volume:
//   `audio win` (i): the window's sample i drives it, not the mean;
//   `coe audio` (c): the level's coefficient (else the command's `coe`);
//   `audio tran` (x, y, z) with `coe tran` and `limit tran` (m or lo, hi):
//       the image's translation L * (x, y, z) * coe, bounded;
//   `audio rota` (x, y, z) with `coe rota` and `limit rota`: angles in
//       degrees about the three axes likewise;
//   `speed audio` (s, 0 to 1): each image moves that part of the way to
//       the new values (1, at once, without it).
// The values go to the part of the transformation that the animation
// adds, so the volume's own placing is kept.
void EXEC_AUDIO_1(Objet* o, float coe);
// `audio anc`: the volumes driven back to their own placing.
void audio_anc();
