// The kinds that read the program's own state: the mouse, live audio,
// the clock and its timers, the interrupt timer; and MIDI input.
#include <string>

#include "device/device_util.h"
#include "interaction/loop_state.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "platform/clock.h"
#include "platform/midi.h"
#include "render/window.h"

// "MOU": x = (2 * mouse x / width - 1 + tran) * coe, y likewise with the
// height, z = 0, from where the pointer hovers. Without a window the
// size is the resolution and the pointer at 0,0.
int lire_souris(Periph& p, Lecture& l) {
  const WindowState& w = win();
  const InteractionState& L = loop();
  const int mx = gl_on() ? L.survol[0] + w.Dimx / 2 : 0;
  const int my = gl_on() ? L.survol[1] + w.Dimy / 2 : 0;
  const float largeur = w.Dimx > 0 ? static_cast<float>(w.Dimx) : 1.0f;
  const float hauteur = w.Dimy > 0 ? static_cast<float>(w.Dimy) : 1.0f;
  const float f[3] = {mappe(p, 2 * mx / largeur - 1), mappe(p, 2 * my / hauteur - 1), 0};
  p.Module = f[0];
  return build_floats(l.v, l.lim, 3, f);
}

// "AUD": live audio is the sound subsystem's; without its capture a read
// reports `audio` and message 106.
int ouvrir_audio(Periph& p, int, word*, const word*) {
  if (p.Dim <= 0) {
    voir_texte("(dim)\n");
    return -1;
  }
  const DeviceAudioHooks& h = devices().audio;
  if (h.demarrer) h.demarrer(p.Dim);
  return 0;
}

int lire_audio(Periph& p, Lecture& l) {
  float v[3];
  const DeviceAudioHooks& h = devices().audio;
  if (!h.lire || h.lire(v) < 0) {
    err_son();
    return build_nil(l.v, l.lim);
  }
  p.Module = v[0];
  return resultat_mappe(l, p, v, 3);
}

// "TIM": year, month, day, hour, minute, second, then the four timers in
// seconds since each was reset. Opening resets them all.
int ouvrir_horloge(Periph&, int, word*, const word*) {
  for (double& t : devices().Timers) t = seconds_since_start();
  return 0;
}

int lire_horloge(Periph&, Lecture& l) {
  int d[6];
  date_time(d);
  const double now = seconds_since_start();
  float f[10];
  for (int i = 0; i < 6; i++) f[i] = static_cast<float>(d[i]);
  for (int i = 0; i < 4; i++) f[6 + i] = static_cast<float>(now - devices().Timers[i]);
  return build_floats(l.v, l.lim, 10, f);
}

int ecrire_horloge(Periph&, int, const word* v) {
  if (!v || tag(v) != T_FLOAT) {
    voir_texte("User Error on Orvela List Format for Reseting Timer, Float expected\n");
    return -1;
  }
  const double now = seconds_since_start();
  for (int i = 0; i < elements(v); i++) {
    const float k = getf(v, i);
    if (k >= 0 && k < 4) devices().Timers[static_cast<int>(k)] = now;
  }
  return 0;
}

// "ITR": the seconds since the device was opened.
int ouvrir_interruption(Periph& p, int, word*, const word*) {
  p.Ouverture = seconds_since_start();
  return 0;
}

int lire_interruption(Periph& p, Lecture& l) {
  const float t = static_cast<float>(seconds_since_start() - p.Ouverture);
  return build_floats(l.v, l.lim, 1, &t);
}

// "MID": the last MIDI message's three bytes, NIL while none has come.
// `number(c)` connects sequencer client c to the input.
int ouvrir_midi(Periph& p, int, word*, const word*) {
  std::string pourquoi;
  p.Midi = midi_open(p.Port, &pourquoi);
  if (!p.Midi) {
    VOIR_CHAR("ERROR MIDI %s\a\n", pourquoi.c_str());
    return -1;
  }
  p.Nom = midi_address(p.Midi);
  return 0;
}

int lire_midi(Periph& p, Lecture& l) {
  if (midi_poll(p.Midi, p.Midi_message)) p.Midi_recu = 1;
  if (!p.Midi_recu) return build_nil(l.v, l.lim);
  const float f[3] = {static_cast<float>(p.Midi_message[0]), static_cast<float>(p.Midi_message[1]),
                      static_cast<float>(p.Midi_message[2])};
  return resultat_mappe(l, p, f, 3);
}

void fermer_midi(Periph& p) {
  midi_close(p.Midi);
  p.Midi = nullptr;
}

int ouvrir_non_implemente(Periph&, int, word*, const word*) {
  voir_message(0, MES_NOT_IMPLEMENTED);
  return -1;
}
