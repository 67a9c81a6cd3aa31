// `device(n) ini("XXX")` and its options: the slot's settings are read,
// then the kind opens it. A failed opening leaves the slot free.
#include <algorithm>

#include "device/device_command.h"
#include "device/device_kinds.h"
#include "device/device_util.h"
#include "kernel/entier.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/commands.h"
#include "platform/serial.h"

namespace {

constexpr int DIM_MAX = 1 << 20;

// The texts of the `name` items, in order (a client names its server,
// then itself).
void noms(word* s, Periph& p) {
  int k = 0;
  word* it = first_item(s);
  for (int i = 0; i < item_count(s); i++, it = next_item(it)) {
    if (it[2] != KW_name) continue;
    const char* t = value_text(item_value(it));
    if (!t) continue;
    (k++ == 0 ? p.Nom : p.Nom_local) = t;
  }
}

// The settings that `ini` takes, on a fresh slot.
void reglages(word* s, Periph& p) {
  noms(s, p);
  if (!arg_text(s, KW_number)) p.Port = arg_int(s, KW_number, 0);
  if (has_word(s, KW_dim)) {
    p.Dim = std::clamp(arg_int(s, KW_dim, 0), 0, DIM_MAX);
    p.Buffer.assign(static_cast<size_t>(p.Dim), 0);
  }
  if (has_word(s, KW_float)) p.Format = T_FLOAT;
  if (has_word(s, KW_char)) p.Format = T_CHAR;
  if (has_word(s, KW_time)) p.Timeout = std::max(0, arg_int(s, KW_time, p.Timeout));
  p.Vitesse = serial_speed(arg_int(s, KW_speed, p.Vitesse));
  // `close` alone or non-zero: reads wait; `close(0)` or none: they don't.
  p.Bloquant = has_word(s, KW_close) && arg_float(s, KW_close, 1) != 0;
  p.Debug = has_word(s, KW_debug);
  p.Inverse = has_word(s, KW_inv);
  p.Coe = arg_float(s, KW_coe, p.Coe);
  p.Dep = arg_float(s, KW_tran, p.Dep);
  p.Attente = std::max(0.0f, arg_float(s, KW_wait, 0));
}

}  // namespace

int ouvrir_slot(word* s, const word* lim, int n, const KindRow& k, void (*regler)(word* s, Periph& p)) {
  Periph* p = periph_ou_erreur(n);
  if (!p) return -1;
  if (p->Type != DEV_LIBRE) {
    if (p->Type != DEV_AUD || k.Type != DEV_AUD) {
      voir_message(1, MESG_OCCUPED_DEVICE);
      return -1;
    }
    const KindRow* avant = kind_row(p->Type);
    if (avant && avant->fermer) avant->fermer(*p);
    *p = Periph{};
  }
  Periph neuf;
  reglages(s, neuf);
  if (regler) regler(s, neuf);
  *p = std::move(neuf);
  p->Type = k.Type;
  if (has_word(s, KW_audio)) {
    const DeviceAudioHooks& h = devices().audio;
    if (h.reglage) h.reglage(s, lim);
    else err_son();
  }
  if (k.ouvrir && k.ouvrir(*p, n, s, lim) < 0) {
    *p = Periph{};
    return -1;
  }
  p->Valider = 1;
  voir_message(0, MES_RULE);
  voir_device(n);
  return 0;
}

int INI_DEVICE(word* s, const word* lim) {
  float num = 0;
  if (floats_of(command_argument(s), &num, 1) < 1) return build_nil(s);
  const int n = entier(num);
  if (!periph_ou_erreur(n)) return -1;
  const char* quoi = arg_text(s, KW_ini);
  int type = quoi ? 0 : arg_int(s, KW_ini, 0);
  const KindRow* k = quoi ? kind_by_ini(quoi, has_word(s, KW_lead)) : kind_row(type);
  if (!k || (!quoi && !k->ini && type != DEV_AUTOMATE)) {
    if (quoi) VOIR_CHAR("%s ", quoi);
    else voir_int("%d ", type);
    voir_message(0, MES_ILLEGAL);
    return -1;
  }
  if (ouvrir_slot(s, lim, n, *k, nullptr) < 0) {
    TRACE_FAIL("INI_DEVICE()");
    return -1;
  }
  return build_nil(s);
}
