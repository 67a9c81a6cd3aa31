// Texts in the window: the `message` of a volume, drawn with the
// toolkit's bitmap font.
#pragma once
#include "kernel/objet.h"
#include "render/display.h"

// The text of `message` at the volume's first vertex (or the origin),
// over a rectangle of `back message`, in `col message`; with mode 0 the
// rectangle's outline; `col frame` adds a frame.
void message_volume(Objet* o, const DisplayRecord& r, int mode);
