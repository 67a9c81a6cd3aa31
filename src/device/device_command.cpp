// The `device` command: `device(n)` reads slot n, `device(n) = v` writes
// it; `validate`, `coe` and `tran` get or set over a list of numbers;
// `end` closes, `edit` prints; `device` alone reads every validated slot
// and gives the mean of their first three values. `device(n) cin` marks
// the slot read at each image of the loop for the pointer; `device(n)
// [lead] texture(port)` opens the older pair of UDP devices.
#include <algorithm>

#include "device/device_command.h"
#include "device/device_kinds.h"
#include "device/device_util.h"
#include "device/osc_device.h"
#include "interaction/loop_state.h"
#include "kernel/entier.h"
#include "kernel/interrupt.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "language/cmd_util.h"
#include "language/commands.h"
#include "language/handlers.h"
#include "language/lang_state.h"
#include "scene/graphic.h"
#include "scene/image_object.h"

namespace {

// The device numbers of the command: at most one of each slot and one more.
struct Numeros {
  float n[NB_PERIPH + 1];
  int count = 0;
};

void lire_numeros(word* s, Numeros& nums) { nums.count = floats_of(command_argument(s), nums.n, NB_PERIPH + 1); }

// Reads slot n into l.v: 0 with a value there, negative after a report.
int lire_un(int n, Periph& p, Lecture& l) {
  const KindRow* k = kind_row(p.Type);
  if (!k || !k->lire) {
    err_device(n);
    return -1;
  }
  const int r = k->lire(p, l);
  if (r == -12) {
    err_dim_ev("DEVICE_b()");
    return r;
  }
  if (r >= 0 && l.debug) print_value(l.v);
  return r;
}

// `device` with no number: every open slot with `validate` set is read;
// the mean of their first three values over the slots actually read.
int moyenne(word* s, word* st, const word* lim) {
  double somme[3] = {0, 0, 0};
  int lus = 0;
  for (int n = 1; n <= NB_PERIPH; n++) {
    Periph* p = periph_ouvert(n);
    if (!p || !p->Valeur) continue;
    Lecture l{st, lim, 0, p->Format, n, p->Debug != 0};
    if (lire_un(n, *p, l) < 0 || tag(st) != T_FLOAT || elements(st) < 1) continue;
    for (int i = 0; i < 3 && i < elements(st); i++) somme[i] += getf(st, i);
    lus++;
  }
  if (lus == 0) return build_nil(s);
  const float moyenne[3] = {static_cast<float>(somme[0] / lus), static_cast<float>(somme[1] / lus),
                            static_cast<float>(somme[2] / lus)};
  return build_floats(s, lim, 3, moyenne);
}

// `validate`, `coe`, `tran` over the numbers of the command: each of
// them given a value sets that field of every open slot; one asked
// without a value gives its fields (one number gives one).
float* champ(Periph& p, int code) { return code == KW_coe ? &p.Coe : code == KW_tran ? &p.Dep : nullptr; }

int reglage_liste(word* s, const Numeros& nums, const word* lim) {
  constexpr int CODES[] = {KW_validate, KW_coe, KW_tran};
  int demande = 0;
  for (int code : CODES) {
    if (!has_word(s, code)) continue;
    const word* v = arg_of(s, code);
    if (!v) {
      if (!demande) demande = code;
      continue;
    }
    const float x = value_at(v, 0, 0);
    for (int i = 0; i < nums.count; i++)
      if (Periph* p = periph_ouvert(entier(nums.n[i]))) {
        if (float* f = champ(*p, code)) *f = x;
        else p->Valeur = entier(x);
      }
  }
  float lu[NB_PERIPH + 1];
  int k = 0;
  for (int i = 0; demande && i < nums.count; i++)
    if (Periph* p = periph_ouvert(entier(nums.n[i]))) {
      const float* f = champ(*p, demande);
      lu[k++] = f ? *f : static_cast<float>(p->Valeur);
    }
  if (k == 0) return build_nil(s);
  return build_floats(s, lim, k, lu);
}

// `image(id)`: the values read, one grey pixel each, row by row, alpha 255.
void vers_image(word* s, const word* v) {
  Objet* o = image_ou_cree(arg_int(s, KW_image, 1), nullptr);
  uint8_t* px = o ? pixels_image(o) : nullptr;
  if (!px) return;
  const long pixels = static_cast<long>(image_nx(o)) * image_ny(o);
  const bool texte = tag(v) == T_CHAR;
  const long n = std::min<long>(pixels, texte ? text_bytes(v) : elements(v));
  for (long i = 0; i < n; i++) {
    const int g = texte ? static_cast<unsigned char>(text(v)[i]) : entier_borne(getf(v, static_cast<int>(i)), 0, 255);
    px[4 * i] = px[4 * i + 1] = px[4 * i + 2] = static_cast<uint8_t>(g);
    px[4 * i + 3] = 255;
  }
}

// `period` and the words the device passes on: the command of that word
// alone, with its value, through the graphic dispatch.
int transmettre(word* s, int code, word* st, const word* lim) {
  const word* v = arg_of(s, code);
  if (seg_ini_r(st, lim) < 0 || (v ? seg_add_val_r(st, lim, code, v) : seg_add_r(st, lim, code)) < 0) {
    err_dim_ev("DEVICE_b()");
    return -12;
  }
  const int r = graphic_command(st, nullptr, lim);
  if (r < 0) return r;
  return set_result(s, st, lim);
}

// `format("F")`, or `format("SP", dep, size)`, into the slot: the text
// and its numbers; none means "CC", as a datagram's format is given at
// each exchange. False after message 66 for a text not of two letters.
bool lire_format(word* s, Periph& p) {
  const word* fv = arg_of(s, KW_format);
  if (!fv) {
    p.Format_echange[0] = '\0';
    return true;
  }
  const word* t = tag(fv) == T_HYBRIDE ? data(fv) : fv;
  if (tag(t) != T_CHAR || text_bytes(t) != 2) {
    if (tag(t) == T_CHAR) VOIR_CHAR("%s ", text(t));
    voir_message(0, MES_ILLEGAL);
    return false;
  }
  p.Format_echange[0] = text(t)[0];
  p.Format_echange[1] = text(t)[1];
  p.Format_echange[2] = '\0';
  p.Sp_dep = std::max(0, entier(value_at(fv, 0, 0)));
  p.Sp_taille = entier(value_at(fv, 1, -1));
  return true;
}

// The result type of a read: the slot's, or `float` / `char` of the command.
int format_lecture(word* s, const Periph& p) {
  if (has_word(s, KW_char)) return T_CHAR;
  if (has_word(s, KW_float)) return T_FLOAT;
  return p.Format;
}

// The words of the area a `cin` read fills: a datagram of 65507 bytes
// read in place, and its header.
constexpr size_t ZONE_CIN = 16400;

// `device(n) cin [format(...)] [float|char]`: device n gives the pointer's
// place at each image, read as `device(n)` with those words reads it; one
// device at a time. `cin(0)` takes it back.
int marquer_cin(word* s, int n, Periph& p) {
  DeviceCin& c = devices().cin;
  if (arg_float(s, KW_cin, 1) == 0) {
    if (c.numero == n) c.numero = 0;
    return build_nil(s);
  }
  if (!lire_format(s, p)) return -1;
  c.numero = n;
  c.format = format_lecture(s, p);
  std::copy(p.Format_echange, p.Format_echange + 3, c.echange);
  c.sp_dep = p.Sp_dep;
  c.sp_taille = p.Sp_taille;
  if (c.zone.size() < ZONE_CIN) c.zone.assign(ZONE_CIN, 0);
  return build_nil(s);
}

// At each image: the `cin` device read into its own area; its first three
// numbers (0 for those missing) in xyz. 1 with numbers, 0 without.
int lire_cin(float xyz[3]) {
  DeviceCin& c = devices().cin;
  Periph* p = c.numero ? periph_ouvert(c.numero) : nullptr;
  if (!p) return 0;
  std::copy(c.echange, c.echange + 3, p->Format_echange);
  p->Sp_dep = c.sp_dep;
  p->Sp_taille = c.sp_taille;
  word* z = c.zone.data();
  Lecture l{z, z + c.zone.size(), 0, c.format, c.numero, p->Debug != 0};
  const int r = lire_un(c.numero, *p, l);
  if (r < 0) return r;
  float v[3] = {0, 0, 0};
  if (floats_of(z, v, 3) == 0) return 0;
  std::copy(v, v + 3, xyz);
  return 1;
}

// The read or write of one open slot, with the options of this command.
int lire_ecrire(word* s, const word* ob, int n, Periph& p, word* st, const word* lim) {
  const KindRow* k = kind_row(p.Type);
  if (k && k->commande) {
    const int r = k->commande(p, n, s, ob);
    if (r <= 0) return r < 0 ? r : build_nil(s);
  }
  if (!lire_format(s, p)) return -1;
  if (has_word(s, KW_wait)) p.Attente = std::max(0.0f, arg_float(s, KW_wait, 0));
  if (p.Type == DEV_DAT && has_word(s, KW_time)) {
    p.Ligne = arg_int(s, KW_time, p.Ligne, 0);
    p.Pas = arg_int(s, KW_time, p.Pas, 1);
  }
  if (ob) {
    if (!k || !k->ecrire) {
      err_device(n);
      return -1;
    }
    if (k->ecrire(p, n, ob) < 0) return -1;
    // `wait(t)` on a write to shared memory: t seconds for the peer.
    if (p.Type == DEV_MEM && has_word(s, KW_wait)) attendre_ms(static_cast<long long>(p.Attente * 1000));
    return build_nil(s);
  }
  const int format = format_lecture(s, p);
  const int dim = has_word(s, KW_dim) ? std::max(0, arg_int(s, KW_dim, 0)) : 0;
  Lecture l{st, lim, dim, format, n, p.Debug || has_word(s, KW_debug)};
  const int r = lire_un(n, p, l);
  if (r < 0) return r;
  if (has_word(s, KW_image)) vers_image(s, st);
  return set_result(s, st, lim);
}

// The older pair of UDP commands: `device(n) [lead] texture(port) ...`.
int paire_udp(word* s, const Numeros& nums, const word* lim) {
  if (nums.count == 0) {
    usage_udp();
    return -1;
  }
  const bool serveur = has_word(s, KW_lead);
  const int n = entier(nums.n[0]);
  if ((serveur ? DEVICE_TYPE_SERVEUR_UDP(s, lim, n) : DEVICE_TYPE_CLIENT_UDP(s, lim, n)) < 0) {
    TRACE_FAIL(serveur ? "DEVICE_TYPE_SERVEUR_UDP()" : "DEVICE_TYPE_CLIENT_UDP()");
    return -1;
  }
  return build_nil(s);
}

int device(word* s, const word* ob, word* st, const word* lim) {
  if (has_word(s, KW_ini)) return INI_DEVICE(s, lim);
  if (has_word(s, KW_period)) return transmettre(s, KW_period, st, lim);
  if (has_word(s, KW_clean)) {
    for (int n = 1; n <= NB_PERIPH; n++) fermer_device(n);
    return build_nil(s);
  }
  Numeros nums;
  lire_numeros(s, nums);
  const int n = nums.count > 0 ? entier(nums.n[0]) : 0;
  if (has_word(s, KW_texture) && !has_word(s, KW_end) && !has_word(s, KW_edit)) return paire_udp(s, nums, lim);
  if (has_word(s, KW_validate) || has_word(s, KW_coe) || has_word(s, KW_tran)) return reglage_liste(s, nums, lim);
  if (n == 0) {
    // `device cin`: the number of the device that places the pointer.
    if (has_word(s, KW_cin)) return build_float(s, lim, static_cast<float>(devices().cin.numero));
    if (has_word(s, KW_edit) || has_word(s, KW_end)) {
      for (int k = 1; k <= NB_PERIPH; k++) has_word(s, KW_edit) ? voir_device(k) : fermer_device(k);
      return build_nil(s);
    }
    return moyenne(s, st, lim);
  }
  if (!periph_ou_erreur(n)) return -1;
  if (has_word(s, KW_end) && nums.count > 1) {
    for (int i = 0; i < nums.count; i++) fermer_device(entier(nums.n[i]));
    return build_nil(s);
  }
  Periph* p = periph_ouvert(n);
  if (!p) {
    err_device(n);
    return -1;
  }
  if (has_word(s, KW_end)) {
    fermer_device(n);
    return build_nil(s);
  }
  if (has_word(s, KW_edit)) {
    voir_device(n);
    voir_ucs(n);
    return build_nil(s);
  }
  if (has_word(s, KW_cin)) return marquer_cin(s, n, *p);
  return lire_ecrire(s, ob, n, *p, st, lim);
}

}  // namespace

int DEVICE_b(word* s, const word* ob, word* st, const word* lim) {
  const int r = device(s, ob, st, lim);
  // A wait that Ctrl-C ended left its slot in order: the dialogue is held
  // here, where abandoning the line leaves nothing half done.
  interrupt_check();
  return r;
}

void install_device_commands() {
  register_graphic_handler({KW_device}, DEVICE_b);
  loop().lire_cin = lire_cin;
  loop().messages = messages_osc;
  lang().between_lines.push_back([] { messages_osc(); });
  ini_devices();
}
