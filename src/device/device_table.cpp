#include "device/device_table.h"

#include "device/device_kinds.h"
#include "kernel/report.h"
#include "platform/clock.h"

DeviceState& devices() {
  static DeviceState d;
  return d;
}

Periph* periph(int n) { return n >= 1 && n <= NB_PERIPH ? &devices().Table_periph[n] : nullptr; }

Periph* periph_ouvert(int n) {
  Periph* p = periph(n);
  return p && p->Type != DEV_LIBRE ? p : nullptr;
}

void ini_devices() {
  for (int n = 1; n <= NB_PERIPH; n++)
    if (devices().Table_periph[n].Type != DEV_LIBRE) {
      Periph& p = devices().Table_periph[n];
      const KindRow* k = kind_row(p.Type);
      if (k && k->fermer) k->fermer(p);
    }
  for (Periph& p : devices().Table_periph) p = Periph{};
  devices().cin.numero = 0;
}

void fermer_device(int n) {
  Periph* p = periph_ouvert(n);
  if (!p) return;
  voir_int("FERMETURE DEVICE %d\n", n);
  const KindRow* k = kind_row(p->Type);
  if (k && k->fermer) k->fermer(*p);
  *p = Periph{};
  if (devices().cin.numero == n) devices().cin.numero = 0;
}

void voir_device(int n) {
  const Periph* p = periph_ouvert(n);
  if (!p) return;
  voir_int("\tnumero = %d ", n);
  const KindRow* k = kind_row(p->Type);
  if (k) VOIR_CHAR(k->etiquette, p->Nom.c_str());
  if (p->Type == DEV_TIM) {
    const double now = seconds_since_start();
    for (double t : devices().Timers) voir_float("%.0f ", static_cast<float>(now - t));
  }
  voir_texte(p->Format == T_FLOAT ? " float " : " char ");
  if (p->Type == DEV_COM) voir_int(" vitesse = %d ", p->Vitesse);
  voir_int(" timeout = %d ms", p->Timeout);
  if (p->Debug) voir_texte(" debug ");
  voir_int(" valider(%d)", p->Valeur);
  voir_float(" coe(%f)", p->Coe);
  voir_float(" dep(%f)", p->Dep);
  if (devices().cin.numero == n) voir_texte(" cin");
  voir_texte("\n");
}
