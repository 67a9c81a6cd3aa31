#include "kernel/chains.h"

#include "kernel/kernel.h"
#include "kernel/keywords.h"
#include "kernel/object_store.h"

namespace {

// The kinds that own a chain, graphic ones (class 1) first.
constexpr int GRAPHIC_KINDS[] = {KW_audio, KW_brush,  KW_device, KW_field,  KW_fog,     KW_font,
                                 KW_genetic, KW_image, KW_law,    KW_light,  KW_memory,  KW_menu,
                                 KW_network, KW_object, KW_scale, KW_see,    KW_stock,   KW_text,
                                 KW_traj,   KW_view,   KW_vol,    KW_win};
constexpr int INTERPRETER_KINDS[] = {KW_message, KW_func, KIND_EXTERN, KW_directory, KW_history, KW_puls};
constexpr int NB_GRAPHIC = sizeof GRAPHIC_KINDS / sizeof *GRAPHIC_KINDS;
constexpr int NB_INTERPRETER = sizeof INTERPRETER_KINDS / sizeof *INTERPRETER_KINDS;
static_assert(NB_GRAPHIC == NB_GRAPHIC_CHAINS && NB_INTERPRETER == NB_INTERPRETER_CHAINS);

ChainHeads& chains() { return kernel().chains; }

}  // namespace

// The heads live as long as the process: their lists are never freed, as
// records may still be unlinked from them while it ends.
ChainHeads::ChainHeads() {
  for (Objet& h : graphic) chaine_ini(&h);
  for (Objet& h : interpreter) chaine_ini(&h);
  chaine_ini(&generic);
  chaine_ini(&temporaries);
  for (Objet& h : graphic) h.members = new std::vector<Objet::Member>;
  for (Objet& h : interpreter) h.members = new std::vector<Objet::Member>;
  generic.members = new std::vector<Objet::Member>;
}

Objet* chaine_de(int classe, int code) {
  ChainHeads& c = chains();
  if (code == KW_message) return &c.interpreter[0];
  if (classe == 1)
    for (int i = 0; i < NB_GRAPHIC; i++)
      if (GRAPHIC_KINDS[i] == code) return &c.graphic[i];
  if (classe == 0 || code == KIND_EXTERN)
    for (int i = 0; i < NB_INTERPRETER; i++)
      if (INTERPRETER_KINDS[i] == code) return &c.interpreter[i];
  return &c.generic;
}

Objet* chaine_classe(int code) { return chaine_de(code >= 0 ? code / 200 : 0, code); }
Objet* chaine_generique() { return &chains().generic; }
Objet* chaine_temporaires() { return &chains().temporaries; }
void chaines_ini() { chains(); }

Objet* premier_numero(Objet* head, int id) {
  if (!head || !head->members) return premier_objet(head, [id](const Objet* o) { return o->id == id; });
  for (const Objet::Member& e : *head->members)
    if (e.id == id && e.o) return e.o;
  return nullptr;
}
