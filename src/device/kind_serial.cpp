// "COM": a serial port named by the device path in `name`. A read takes
// what has come, `Dim` bytes at most, and maps each; a write sends the
// bytes of a text (or one byte a number) within 1000 ms.
#include <algorithm>

#include "device/device_util.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "platform/serial.h"

namespace {

constexpr int FILE_SERIE = 256;       // bytes of the port's queues
constexpr int ECRITURE_SERIE_MS = 1000;

}  // namespace

int ouvrir_serie(Periph& p, int, word*, const word*) {
  p.Vitesse = serial_speed(p.Vitesse);
  p.Sock = serial_open(p.Nom.c_str(), p.Vitesse);
  if (p.Sock < 0) {
    VOIR_CHAR("ERROR OUVERTURE COM%s\a\n", p.Nom.c_str());
    return -1;
  }
  return 0;
}

int lire_serie(Periph& p, Lecture& l) {
  unsigned char octets[FILE_SERIE];
  const int n = std::clamp(l.n > 0 ? l.n : (p.Dim > 0 ? p.Dim : FILE_SERIE), 1, FILE_SERIE);
  const long lu = serial_read(p.Sock, octets, static_cast<size_t>(n));
  if (lu < 0) {
    VOIR_CHAR("ERROR OUVERTURE COM%s\a\n", p.Nom.c_str());
    return build_nil(l.v, l.lim);
  }
  if (l.debug) {
    voir_int("%d octets lus: ", static_cast<int>(lu));
    for (long i = 0; i < lu; i++) voir_int("%d ", octets[i]);
    voir_texte("\n");
  }
  return resultat_octets(l, p, octets, static_cast<int>(lu));
}

int ecrire_serie(Periph& p, int, const word* v) {
  const unsigned char* data = nullptr;
  size_t n = 0;
  if (!octets_de_valeur(p, v, true, &data, &n)) return -1;
  if (serial_write(p.Sock, data, n, ECRITURE_SERIE_MS) != static_cast<long>(n)) {
    voir_message(0, MES_TIME_OUT);
    return -1;
  }
  return 0;
}

void fermer_serie(Periph& p) {
  serial_close(p.Sock);
  p.Sock = -1;
}
