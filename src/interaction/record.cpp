// The record of the keys typed in the window and its replay:
//   interaction ascii write("name")   records, from now on, the keys with
//                                     the number of the image they came in
//   interaction ascii read("name")    replays such a record
// Asked for before the loop runs, they start with it.
// While recording, a gauge "NUM " counts the images and a "STOP" button
// under it writes the record ("gare stocker name") and ends recording.
#include <cstdio>
#include <string>

#include "interaction/internal.h"
#include "kernel/file_out.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "platform/files.h"
#include "render/frame.h"

namespace {

constexpr int RECORD = 242;

int ecrit_enregistrement() {
  InteractionState& L = loop();
  std::string text;
  for (int i = 0; i < L.nb_touches; i++) {
    char line[32];
    std::snprintf(line, sizeof line, "%d %d\n", L.enregistrement_touches[2 * i], L.enregistrement_touches[2 * i + 1]);
    text += line;
  }
  if (!ecrit_fichier(L.fichier_enregistrement, text)) return -1;
  VOIR_CHAR("gare stocker %s\n", L.fichier_enregistrement.c_str());
  return 0;
}

// The gauge of step 31: its frame and a counted label.
void jauge(const char* label, int n) {
  const float blanc[3] = {1, 1, 1};
  const float cadre[4] = {-200, -10, 200, 10};
  outline_rectangle(cadre, blanc);
  char texte[24];
  std::snprintf(texte, sizeof texte, "%s%d", label, n);
  text_at(texte, -195, 5, blanc);
}

}  // namespace

int enregistre(const char* name) {
  InteractionState& L = loop();
  if (L.Mode_graphique != KW_interaction) {
    L.fichier_enregistrement = name;
    L.enregistrement_du = RECORD;
    return 0;
  }
  if (L.enregistrement_touches.empty()) {
    err_debordement(nullptr);
    return -1;
  }
  L.fichier_enregistrement = name;
  L.nb_touches = 0;
  L.image_enregistrement = 0;
  L.mode_enregistrement = RECORD;
  return 0;
}

int relit(const char* name) {
  InteractionState& L = loop();
  if (L.Mode_graphique != KW_interaction) {
    L.fichier_enregistrement = name;
    L.enregistrement_du = -RECORD;
    return 0;
  }
  OsFile* f = os_open(name);
  if (!f) {
    err_lecture(name);
    return -1;
  }
  std::string text;
  char buf[4096];
  for (size_t n; (n = os_read(f, buf, sizeof buf)) > 0;) text.append(buf, n);
  os_close(f);
  L.nb_touches = 0;
  const char* p = text.c_str();
  for (int image, key, used; std::sscanf(p, "%d %d%n", &image, &key, &used) == 2; p += used) {
    if (2 * L.nb_touches + 1 >= static_cast<int>(L.enregistrement_touches.size())) {
      err_debordement(nullptr);
      return -1;
    }
    L.enregistrement_touches[2 * L.nb_touches] = image;
    L.enregistrement_touches[2 * L.nb_touches + 1] = key;
    L.nb_touches++;
  }
  L.relecture = 0;
  L.image_enregistrement = 0;
  L.mode_enregistrement = -RECORD;
  return 0;
}

int enregistrement_du() {
  InteractionState& L = loop();
  const int du = L.enregistrement_du;
  L.enregistrement_du = 0;
  if (du == RECORD) return enregistre(L.fichier_enregistrement.c_str());
  if (du == -RECORD) return relit(L.fichier_enregistrement.c_str());
  return 0;
}

void note_touche(unsigned char key) {
  InteractionState& L = loop();
  if (L.mode_enregistrement != RECORD) return;
  if (2 * L.nb_touches + 1 >= static_cast<int>(L.enregistrement_touches.size())) {
    err_debordement(nullptr);
    L.mode_enregistrement = 0;
    return;
  }
  L.enregistrement_touches[2 * L.nb_touches] = L.image_enregistrement;
  L.enregistrement_touches[2 * L.nb_touches + 1] = key;
  L.nb_touches++;
}

// A key typed after n images was seen by image n + 1. Replayed during
// image n (whose number the counter gives once the image ends), it is
// seen by image n + 1 as well.
void rejoue_touches() {
  InteractionState& L = loop();
  if (L.mode_enregistrement != -RECORD) return;
  while (static_cast<int>(L.relecture) < L.nb_touches &&
         L.enregistrement_touches[2 * L.relecture] <= L.image_enregistrement + 1) {
    const unsigned char key = static_cast<unsigned char>(L.enregistrement_touches[2 * L.relecture + 1]);
    L.relecture++;
    touche(key, 0, 0);
  }
}

int jauges() {
  InteractionState& L = loop();
  if (!L.mode_enregistrement) return 0;
  const float blanc[3] = {1, 1, 1};
  if (L.attente > 0) {
    // A wait holds the record and the replay alike; at its end both start
    // counting images again from 0, so that a replay stays in step with
    // the record it reads.
    jauge("WAIT ", ++L.cpt_attente);
    if (L.cpt_attente >= L.attente) L.attente = L.cpt_attente = L.image_enregistrement = 0;
    return 0;
  }
  if (L.mode_enregistrement < 0) {
    if (static_cast<int>(L.relecture) >= L.nb_touches) L.mode_enregistrement = 0;
    else L.image_enregistrement++;
    return 0;
  }
  L.image_enregistrement++;
  jauge("NUM ", L.image_enregistrement);
  const float w = text_width("STOP");
  text_at("STOP", -200, 25, blanc);
  const bool dessus = L.clic[0] >= -200 && L.clic[0] <= -200 + w && L.clic[1] >= 10 && L.clic[1] <= 29;
  if (L.clic_pris[0] && dessus) {
    L.mode_enregistrement = 0;
    return ecrit_enregistrement();
  }
  return 0;
}
