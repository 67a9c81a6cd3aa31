#include "sound/sound_unsaved.h"

#include <vector>

#include "kernel/bye.h"
#include "kernel/file_out.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "persist/object_file.h"
#include "platform/process.h"
#include "scene/unsaved.h"
#include "sound/sound_files.h"
#include "sound/sound_object.h"
#include "sound/wav_header.h"

namespace {

bool sauve_sons(const std::string& path) { return ecrit_sons(path, true) == 0; }

}  // namespace

int ecrit_sons(const std::string& name, bool non_sauves_seuls) {
  std::vector<Objet*> sons;
  std::vector<word> words;
  for (Objet* o = chaine_audio()->next; o; o = o->next)
    if (o->kind == KW_audio && (o->unsaved || !non_sauves_seuls)) {
      if (WRITE_OBJ_1(o, words, nullptr) < 0) return -1;
      sons.push_back(o);
    }
  if (!ecrit_fichier(name, words.data(), words.size() * sizeof(word))) {
    TRACE_FAIL("ecrit_sons()");
    return -1;
  }
  for (Objet* o : sons) o->unsaved = 0;
  return 0;
}

int lit_sons(const std::string& name) {
  std::string bytes;
  if (!file_read_all(name, bytes)) {
    err_pas_trouve(name.c_str());
    return -1;
  }
  LectureObjets how;
  how.chaine = chaine_audio();
  how.kind = KW_audio;
  const int n = lire_objets(bytes, how);
  for (Objet* o = chaine_audio()->next; o; o = o->next) {
    if (o->kind != KW_audio || Rate(o) != 0) continue;
    // A record read just now: the rate is in its header only.
    WavEntete e;
    const uint8_t* b = audio_octets(o);
    if (b && lit_entete_wav(b, static_cast<size_t>(Size(o)), e) == WavLecture::ok) {
      Rate(o) = e.Rate;
      Images(o) = images_son(o);
      ecrit_meta(o, e.format, 0);
    }
  }
  return n;
}

void install_sound_unsaved() {
  UnsavedWork w;
  w.pending = [] { return objets_non_sauves(KW_audio); };
  w.extension = ".audio";
  w.save = sauve_sons;
  w.question = "Sounds have not been saved, leave (0,1) ?\a";
  unsaved_work_register(w);
}
