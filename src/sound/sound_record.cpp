#include "sound/sound_record.h"

#include "device/device_table.h"
#include "device/device_util.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "platform/safe_write.h"
#include "sound/sound_object.h"

namespace {

void ecrit_enregistrement(EnregistrementStock& r) {
  const size_t n = r.bloc.size() * sizeof(float);
  const WriteFault f = safe_write_file(r.nom, r.bloc.data(), n);
  if (f == WriteFault::none) {
    voir_mot(KW_write);
    VOIR_CHAR("%s\n", r.nom.c_str());
  } else if (f == WriteFault::create) {
    err_pas_trouve(r.nom.c_str());
  } else {
    voir_int2("%d != %d ", 0, static_cast<int>(n));
    voir_message(0, MES_DISK_FULL);
  }
}

}  // namespace

int stock_audio_ini(const std::string& name, int images) {
  if (name.empty() || images < 1 || images > 10000000) {
    voir_texte("stock audio name(\"nnn.stock\") time(images)\a\n");
    return -1;
  }
  EnregistrementStock& r = son().enregistrement;
  r.nom = name;
  if (r.nom.size() < 6 || r.nom.compare(r.nom.size() - 6, 6, ".stock") != 0) r.nom += ".stock";
  r.limite = images;
  r.compte = 0;
  r.bloc.clear();
  r.bloc.reserve(static_cast<size_t>(images) * 2);
  r.actif = true;
  return 0;
}

int STOCK_AUDIO() {
  EnregistrementStock& r = son().enregistrement;
  if (!r.actif) return 0;
  float v[3];
  const DeviceAudioHooks& h = devices().audio;
  if (!h.lire || h.lire(v) < 0) {
    err_son();
    r.actif = false;
    return 0;
  }
  r.bloc.push_back(v[0]);
  r.bloc.push_back(v[2]);
  if (++r.compte < r.limite) return 0;
  ecrit_enregistrement(r);
  r.actif = false;
  return 0;
}
