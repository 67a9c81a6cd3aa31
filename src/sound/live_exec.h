// EXEC_AUDIO: the volumes and images moved by the live sound at each image.
#pragma once
#include "kernel/objet.h"

// The loop's audio step: with the capture on, `audio exec` given and the
// `audio` flag not negative, one poll, then EXEC_AUDIO_1 on each volume
// named and AUDIO_IMAGE on each image named (every volume when neither
// list is given). Always 0: a failed poll keeps the last values.
int EXEC_AUDIO();

// One volume from the current levels. Its properties say which sound
// value drives what:
//   `audio tran`, `audio rota`, `audio dila` (x, y, z): the part of the
//       translation, of the angles about the three axes (degrees) and of
//       the scale that the animation adds is L * (x, y, z); L is the mean
//       level, or with `audio win` (i) the window's sample i;
//   the three-level forms `audio tran min` and the like, with `min`,
//       `max` or `rand` last: the same from the running minimum, the
//       running maximum, or the change (the sample i of the difference
//       of two windows with `audio win`, else the mean's change); every
//       form given adds its part;
//   `coe audio` (c): L's coefficient (else the command's `coe`);
//   `coe tran`, `coe rota`, `coe dila`: a coefficient of each part;
//   `limit tran`, `limit rota`, `limit dila` (m, or lo, hi): its bounds;
//   `meta func` ("f"): the function f(vol, L, min, max) of the language,
//       whose value (tran x, y, z, rotx, roty, rotz, dila x, y, z; missing
//       ones 0) is added to the parts;
//   `audio image` (n1, n2 ...): the image laid on the volume (`texture`),
//       chosen by AUDIO_IMAGE;
//   `speed audio` (s, 0 to 1): each image moves that part of the way to
//       the new values (1, at once, without it).
// A part that no property drives is left alone, so the volume's own
// placing and the other animations are kept.
void EXEC_AUDIO_1(Objet* o, float coe);

// AUDIO_IMAGE: one of the images of the object's `audio image` list,
// chosen by the level L against its `audio period` table of ascending
// bounds: the last bound not above L gives the image (the first when L is
// below them all). A table that is missing or begins with a negative
// value is made on the first call, a bound every 25 from 0, and kept in
// the object. A volume lays the image on itself (`texture`); an image
// takes its pixels, when both are of one size. The image's number, or 0
// when there is none. Under `debug` it traces its reading.
int AUDIO_IMAGE(Objet* o, float L);

// `audio anc`: the volumes driven back to their own placing.
void audio_anc();
