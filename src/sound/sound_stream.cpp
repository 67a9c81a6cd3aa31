#include "sound/sound_stream.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "kernel/entier.h"
#include "kernel/file_out.h"
#include "kernel/report.h"
#include "platform/files.h"
#include "platform/safe_write.h"
#include "sound/sound_object.h"

namespace {

bool type_de(const std::string& t, TypeFlux* out) {
  if (t.empty() || t == "float") *out = TypeFlux::float_;
  else if (t == "char") *out = TypeFlux::char_;
  else if (t == "long") *out = TypeFlux::long_;
  else {
    VOIR_CHAR("%s != (char, float, long)\a\n", t.c_str());
    return false;
  }
  return true;
}

int taille(TypeFlux t) { return t == TypeFlux::char_ ? 1 : 4; }

}  // namespace

int WRITE_AUDIO_1(const std::string& name, const std::string& type) {
  TypeFlux t;
  if (!type_de(type, &t)) return -1;
  if (son().flux.ecriture) END_WRITE_AUDIO();
  WriteFault fault = WriteFault::none;
  SafeFile* f = safe_open(name, false, &fault);
  if (!f) {
    signale_ecriture(name, fault);
    return -1;
  }
  son().flux.ecriture = f;
  son().flux.nom_ecriture = name;
  son().flux.type_ecriture = t;
  return 0;
}

int READ_AUDIO_1(const std::string& name, const std::string& type) {
  TypeFlux t;
  if (!type_de(type, &t)) return -1;
  if (son().flux.lecture) END_READ_AUDIO();
  OsFile* f = os_open(name.c_str());
  if (!f) {
    err_pas_trouve(name.c_str());
    return -1;
  }
  son().flux.lecture = f;
  son().flux.type_lecture = t;
  return 0;
}

int ecrit_flux(const std::vector<float>& v) {
  FluxSon& s = son().flux;
  if (!s.ecriture) {
    voir_texte("write audio(\"name\") type(\"char\"|\"float\"|\"long\")\a\n");
    return -1;
  }
  for (float x : v) {
    uint8_t b[4];
    if (s.type_ecriture == TypeFlux::char_) {
      b[0] = static_cast<uint8_t>(entier_borne(x, 0, 255));
    } else if (s.type_ecriture == TypeFlux::long_) {
      const int32_t i = entier(x);
      std::memcpy(b, &i, 4);
    } else {
      std::memcpy(b, &x, 4);
    }
    if (!safe_write(s.ecriture, b, static_cast<size_t>(taille(s.type_ecriture)))) {
      signale_ecriture(s.nom_ecriture, safe_fault(s.ecriture));
      return -1;
    }
  }
  return 0;
}

int lit_flux(int n, std::vector<float>& out) {
  FluxSon& s = son().flux;
  out.clear();
  if (!s.lecture) {
    voir_texte("read audio(\"name\") type(\"char\"|\"float\"|\"long\")\a\n");
    return -1;
  }
  const int k = taille(s.type_lecture);
  for (int i = 0; i < n; i++) {
    uint8_t b[4];
    if (os_read(s.lecture, reinterpret_cast<char*>(b), static_cast<size_t>(k)) != static_cast<size_t>(k)) break;
    if (s.type_lecture == TypeFlux::char_) {
      out.push_back(b[0]);
    } else if (s.type_lecture == TypeFlux::long_) {
      int32_t v;
      std::memcpy(&v, b, 4);
      out.push_back(static_cast<float>(v));
    } else {
      float v;
      std::memcpy(&v, b, 4);
      out.push_back(v);
    }
  }
  return 0;
}

int END_WRITE_AUDIO() {
  FluxSon& s = son().flux;
  if (!s.ecriture) return 0;
  const WriteFault f = safe_commit(s.ecriture);
  s.ecriture = nullptr;
  if (f == WriteFault::none) return 0;
  voir_texte("ERROR fclose\a\n");
  return -1;
}

int END_READ_AUDIO() {
  FluxSon& s = son().flux;
  if (!s.lecture) return 0;
  os_close(s.lecture);
  s.lecture = nullptr;
  return 0;
}
