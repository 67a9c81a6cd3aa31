// The beep path, the last step of an image before the pacing: with a note
// table set, one note an image, its frequency interpolated in the table at
// a position that moves by a step and turns back at either end. The tone
// goes to the audio back end when one is registered and has a device,
// otherwise to the terminal's bell.
#include "interaction/internal.h"
#include "platform/console_io.h"

float note_courante() {
  const InteractionState& L = loop();
  const int n = static_cast<int>(L.notes.size());
  if (n == 1) return L.notes[0];
  const float p = L.position_note;
  const int i = p >= static_cast<float>(n - 1) ? n - 2 : static_cast<int>(p);
  const float t = p - static_cast<float>(i);
  return L.notes[i] + t * (L.notes[i + 1] - L.notes[i]);
}

void bip() {
  InteractionState& L = loop();
  if (L.notes.empty()) return;
  const float f = note_courante();
  if (!L.bip || !L.bip(f, L.duree_note)) out_write("\a", 1);
  const float fin = static_cast<float>(L.notes.size() - 1);
  L.position_note += L.pas_note;
  if (L.position_note >= fin || L.position_note <= 0) {
    L.position_note = L.position_note >= fin ? fin : 0;
    L.pas_note = -L.pas_note;
  }
}
