// "OSC": a client (kind 20) toward `name` (127.0.0.1 by default) and port
// `number`, answered on a port of its own, or with `lead` a server
// (kind 21) on port `number` that answers whoever wrote last. Reads never
// wait: what came is taken into the device's queue at each image, before
// each console line and at each read.
#include <algorithm>
#include <cstring>

#include "device/device_util.h"
#include "device/osc_device.h"
#include "kernel/access.h"
#include "kernel/handles.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "language/args.h"
#include "language/call.h"
#include "language/function_files.h"
#include "language/functions.h"

namespace {

constexpr int SLOTS = 4096;
constexpr int MOTS_SLOT = 256;  // 1 KB: a message value of 1 KB at most by default
// Packets taken at a time: the most that two images can bring at a
// high rate, so that one poll never holds an image for long.
constexpr int PRIS_MAX = 4096;

word* slot(OscDevice& d, int i) { return d.file.data() + static_cast<size_t>((d.tete + i) % d.slots) * d.mots_slot; }

void recu(void* ctx, const char* path, const OscArg* args, int argc) {
  OscDevice& d = *static_cast<OscDevice*>(ctx);
  d.recus++;
  if (d.nombre == d.slots) {
    d.perdus++;
    return;
  }
  word* at = slot(d, d.nombre);
  if (osc_valeur_message(at, at + d.mots_slot, path, args, argc) < 0) {
    d.trop_longs++;
    return;
  }
  d.nombre++;
}

void faute(void* ctx, int, const char* what) {
  const OscDevice& d = *static_cast<const OscDevice*>(ctx);
  voir_int("device %d: ", d.numero);
  VOIR_CHAR("not an OSC packet (%s)\n", what);
}

// What was lost since last told, in one line.
void dire_pertes(OscDevice& d) {
  if (d.perdus) {
    voir_int2("device %d: %d OSC messages lost, the queue was full\n", d.numero, static_cast<int>(d.perdus));
    d.perdus = 0;
  }
  if (d.trop_longs) {
    voir_int2("device %d: %d OSC messages too long for the queue's slots (dim)\n", d.numero,
              static_cast<int>(d.trop_longs));
    d.trop_longs = 0;
  }
}

void prendre(OscDevice& d) {
  OscSink sink;
  sink.ctx = &d;
  sink.message = recu;
  sink.fault = faute;
  osc_poll(d.end, sink, PRIS_MAX);
  dire_pertes(d);
}

Objet* fonction_de(word h) {
  Objet* f = h ? handle_objet(h) : nullptr;
  return f && f->kind == KW_func ? f : nullptr;
}

const OscRoute* route_de(const OscDevice& d, const word* message) {
  const char* path = text(sous_bloc(message, 0));
  for (const OscRoute& r : d.routes)
    if (osc_match(r.motif.c_str(), path)) return &r;
  return nullptr;
}

// The waiting messages in order: a routed one goes to its function, the
// others stay in the queue, in their order.
int router(OscDevice& d) {
  if (d.routes.empty() || d.nombre == 0) return 0;
  const int n = d.nombre;
  int gardes = 0, r = 0;
  for (int i = 0; i < n; i++) {
    word* m = slot(d, i);
    const OscRoute* route = route_de(d, m);
    if (!route) {
      if (gardes != i) std::memcpy(slot(d, gardes), m, static_cast<size_t>(size(m)) * sizeof(word));
      gardes++;
      continue;
    }
    Objet* f = fonction_de(route->fonction);
    if (f && run_function_value(f, m) < 0) {
      VOIR_CHAR("%s\n", f->name ? f->name : "");
      r = -1;
    }
  }
  d.nombre = gardes;
  return r;
}

OscDevice* nouvelle(Periph& p, int n, OscEnd* e) {
  OscDevice* d = new OscDevice;
  d->end = e;
  d->numero = n;
  d->mots_slot = std::max(MOTS_SLOT, p.Dim / 4 + 16);
  d->slots = SLOTS;
  d->file.assign(static_cast<size_t>(d->slots) * d->mots_slot, 0);
  p.Osc = d;
  return d;
}

bool port_valide(int port, bool zero) {
  if (port <= 65535 && (port > 0 || (zero && port == 0))) return true;
  voir_int2(zero ? "%d [0,%d]" : "%d [1,%d]", port, 65535);
  voir_message(0, MES_ILLEGAL);
  return false;
}

int echec_ouverture() {
  VOIR_CHAR("OSC: %s\n", osc_error());
  return -1;
}

}  // namespace

int ouvrir_osc_serveur(Periph& p, int n, word*, const word*) {
  if (!port_valide(p.Port, true)) return -1;
  OscEnd* e = osc_server(p.Port);
  if (!e) return echec_ouverture();
  nouvelle(p, n, e);
  p.Port = osc_port(e);
  p.Nom = std::to_string(p.Port);
  return 0;
}

int ouvrir_osc_client(Periph& p, int n, word*, const word*) {
  if (!port_valide(p.Port, false)) return -1;
  const std::string hote = p.Nom.empty() ? "127.0.0.1" : p.Nom;
  OscEnd* e = osc_client(hote.c_str(), p.Port);
  if (!e) return echec_ouverture();
  nouvelle(p, n, e);
  p.Nom = hote + ":" + std::to_string(p.Port);
  return 0;
}

int lire_osc(Periph& p, Lecture& l) {
  OscDevice& d = *p.Osc;
  prendre(d);
  if (router(d) < 0) return -1;
  if (d.nombre == 0) return build_nil(l.v, l.lim);
  const word* m = slot(d, 0);
  int r;
  if (l.format == T_FLOAT) {
    // The numbers alone, mapped by `tran` and `coe`.
    int total = 0;
    for (int i = 0; i < hybride_parts(m); i++)
      if (const word* part = sous_bloc(m, i); tag(part) == T_FLOAT) total += elements(part);
    word* z = build_zeros(l.v, l.lim, total);
    r = z ? 0 : -12;
    for (int i = 0, k = 0; z && i < hybride_parts(m); i++)
      if (const word* part = sous_bloc(m, i); tag(part) == T_FLOAT)
        for (int e = 0; e < elements(part); e++) setf(z, k++, mappe(p, getf(part, e)));
  } else {
    r = build_fits(l.v, size(m), l.lim) ? (std::memcpy(l.v, m, static_cast<size_t>(size(m)) * sizeof(word)), 0)
                                         : build_overflow();
  }
  d.tete = (d.tete + 1) % d.slots;
  d.nombre--;
  return r;
}

int ecrire_osc(Periph&, int n, const word*) {
  voir_int("device %d: ", n);
  voir_texte("an OSC message is sent with its address: device(n) format(\"/address\") = v\n");
  return -1;
}

void fermer_osc(Periph& p) {
  if (!p.Osc) return;
  osc_close(p.Osc->end);
  delete p.Osc;
  p.Osc = nullptr;
}

namespace {

// `format("/pattern") func("f")` routes the messages that the pattern
// matches to f; `format("/pattern") func` takes the route away; `func`
// alone lists the routes.
int routes(OscDevice& d, word* s) {
  const char* motif = arg_text(s, KW_format);
  if (!motif) {
    for (const OscRoute& r : d.routes) {
      const Objet* f = fonction_de(r.fonction);
      VOIR_CHAR("%s -> ", r.motif.c_str());
      VOIR_CHAR("%s\n", f && source_of(f) ? function_name(source_of(f)).c_str() : "?");
    }
    return 0;
  }
  auto it = std::find_if(d.routes.begin(), d.routes.end(), [&](const OscRoute& r) { return r.motif == motif; });
  const char* nom = arg_text(s, KW_func);
  if (!nom || !*nom) {
    if (it != d.routes.end()) d.routes.erase(it);
    return 0;
  }
  Objet* f = get_fonction(nom);
  if (!f) f = load_function_from_disk(nom);
  if (!f) {
    err_fonction_inconnue(nom);
    return -1;
  }
  if (it == d.routes.end()) it = d.routes.insert(d.routes.end(), OscRoute{motif, 0});
  it->fonction = objet_handle(f);
  return 0;
}

int envoyer(Periph& p, int n, word* s, const word* ob) {
  const char* adresse = arg_text(s, KW_format);
  if (!adresse || adresse[0] != '/') {
    usage_osc();
    return -1;
  }
  if (!osc_has_peer(p.Osc->end)) {
    voir_int("Periph %d : Cote Distant Inconnu \n", n);
    return -1;
  }
  osc_begin(p.Osc->end);
  if (!osc_ajoute_valeur(p.Osc->end, ob, arg_text(s, KW_type))) return -1;
  if (osc_send(p.Osc->end, adresse) < 0) {
    voir_int("device %d: ", n);
    VOIR_CHAR("OSC send failed (%s)\n", osc_error());
    return -1;
  }
  return 0;
}

}  // namespace

int commande_osc(Periph& p, int n, word* s, const word* ob) {
  if (has_word(s, KW_func)) return routes(*p.Osc, s);
  if (has_word(s, KW_format)) {
    if (!ob) {
      usage_osc();
      return -1;
    }
    return envoyer(p, n, s, ob);
  }
  return 1;
}

int messages_osc() {
  int r = 0;
  for (int n = 1; n <= NB_PERIPH; n++) {
    Periph* p = periph_ouvert(n);
    if (!p || !p->Osc) continue;
    prendre(*p->Osc);
    if (router(*p->Osc) < 0) r = -1;
  }
  return r;
}

void usage_osc() {
  voir_texte("device(n) ini(\"OSC\") lead number(port) [dim(bytes)] : OSC server\n");
  voir_texte("device(n) ini(\"OSC\") name(\"host\") number(port) [dim(bytes)] : OSC client\n");
  voir_texte("m = device(n) : the oldest message, \"/address\" then its arguments; NIL when none\n");
  voir_texte("device(n) format(\"/address\") [type(\"types\")] = v : sends v (types among i f h d c s S b T F N I)\n");
  voir_texte("device(n) format(\"/pattern\") func(\"f\") : f(m) receives the messages that match\n");
}
