#include "sound/sound_stock.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "kernel/keywords.h"
#include "kernel/kernel.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "platform/process.h"
#include "platform/safe_write.h"
#include "sound/sound_object.h"

namespace {

constexpr int MAX_IMAGES_STOCK = 10000000;  // 111 hours

// The floats to the file; a short write prints the counts and message 67.
int ecrit_floats(const std::string& name, const std::vector<float>& v) {
  const size_t n = v.size() * sizeof(float);
  const WriteFault f = safe_write_file(name, v.data(), n);
  if (f == WriteFault::none) return 0;
  VOIR_CHAR("%s ", name.c_str());
  voir_int2("%d != %d ", 0, static_cast<int>(n));
  voir_message(0, MES_DISK_FULL);
  return -1;
}


}  // namespace

std::vector<float> analyse_stock(const uint8_t* d, long long n, const FormeStock& f, float c1, float c2) {
  std::vector<float> out;
  const int nb = f.Nb_octet;
  if ((nb != 1 && nb != 2) || f.Rate <= 0 || f.Channel <= 0 || f.Images <= 0) return out;
  const long long fenetre = f.Rate / 25, pas = static_cast<long long>(f.Channel) * nb;
  const long long trames = n / pas;
  out.resize(static_cast<size_t>(f.Images) * 2);
  for (long long w = 0; w < f.Images; w++) {
    const long long debut = w * fenetre, fin = std::min(debut + fenetre, trames);
    long long somme = 0, compte = 0;
    if (nb == 1) {
      for (long long i = debut; i < fin; i++) somme += d[i * pas];
      for (long long i = debut, drapeau = 0; i < debut + fenetre; i++) {
        const long long v = i < trames ? d[i * pas] : 0;
        if (v > somme && !drapeau) {
          compte++;
          drapeau = 1;
        } else {
          drapeau = 0;
        }
      }
      out[w * 2] = static_cast<float>(compte) / 20000.0f;
      out[w * 2 + 1] = static_cast<float>(somme) / (static_cast<float>(f.Rate) * 127.0f);
    } else {
      for (long long i = debut; i < fin; i++) somme += lit_echantillon(d + i * pas, 2);
      const long long apres = debut + fenetre;
      const long long v = apres < trames ? lit_echantillon(d + apres * pas, 2) : 0;
      for (long long i = 0, drapeau = 0; i < fenetre; i++) {
        if (v > somme && !drapeau) {
          compte++;
          drapeau = 1;
        } else {
          drapeau = 0;
        }
      }
      out[w * 2] = static_cast<float>(compte) / (c1 * 20000.0f);
      out[w * 2 + 1] = static_cast<float>(somme) / (c2 * static_cast<float>(f.Rate) * 32767.0f);
    }
  }
  return out;
}

int garde_stock(Objet* o, const std::vector<float>& pairs) {
  const int n = static_cast<int>(pairs.size() / 2);
  bloc v = set_val_1(o, KW_stock, n * 2);
  if (!v) return -1;
  np(v) = n;
  dimp(v) = 2;
  for (int i = 0; i < n * 2; i++) setf(v, i, pairs[i]);
  return 0;
}

int WAV_STOCK_AUDIO_1(Objet* o, const char* name, float c1, float c2, std::vector<float>& pairs) {
  const uint8_t* d = donnees(o);
  if (Nb_octet(o) != 1 && Nb_octet(o) != 2) {
    voir_int("data size %d\n", Nb_octet(o));
    return -1;
  }
  // A pair an image: a header's rate of a few Hz would ask for more
  // images than any animation follows.
  if (Images(o) > MAX_IMAGES_STOCK || Rate(o) < IMAGES_SECONDE) {
    err_malloc("WAV_STOCK_AUDIO_1()", static_cast<double>(Images(o)) * 8);
    return -1;
  }
  pairs = analyse_stock(d, d ? octets_donnees(o) : 0, {Rate(o), Channel(o), Nb_octet(o), Images(o)}, c1, c2);
  if (pairs.empty() || garde_stock(o, pairs) < 0) {
    TRACE_FAIL("WAV_STOCK_AUDIO_1()");
    return -1;
  }
  if (!name || !*name) return 0;
  std::string file = name;
  if (file.size() < 6 || file.compare(file.size() - 6, 6, ".stock") != 0) file += ".stock";
  return ecrit_floats(file, pairs);
}

int AUDIO_STOCK_ID(int id, const std::string& name, std::vector<float>& pairs) {
  std::string bytes;
  if (!file_read_all(name, bytes)) {
    err_pas_trouve(name.c_str());
    return -1;
  }
  pairs.assign(bytes.size() / 8 * 2, 0.0f);
  std::memcpy(pairs.data(), bytes.data(), pairs.size() * sizeof(float));
  Objet* o = audio_numero(id);
  if (!o) o = audio_nouveau(id);
  if (!o || garde_stock(o, pairs) < 0) {
    TRACE_FAIL("AUDIO_STOCK_ID()");
    return -1;
  }
  return 0;
}

int WAV_WRITE_STOCK_AUDIO(Objet* o, const std::string& name, float pas, float moyenne, bool max) {
  const int nb = Nb_octet(o), canaux = Channel(o);
  if (canaux != 1 && canaux != 2) {
    voir_int("channel %d\n", canaux);
    return -1;
  }
  if (nb != 1 && nb != 2) {
    voir_int("data size %d\n", nb);
    return -1;
  }
  const long long trames_pas = std::llround(static_cast<double>(pas) * Rate(o));
  if (trames_pas < 1) {
    voir_texte("write audio(id) stock(t) name(\"nnn\") [average(t)] [max]\a\n");
    return -1;
  }
  long long lues = trames_pas;
  if (moyenne > 0) lues = std::clamp<long long>(std::llround(static_cast<double>(moyenne) * Rate(o)), 1, trames_pas);
  const uint8_t* d = donnees(o);
  const long long total = trames(o);
  std::vector<float> v;
  for (long long debut = 0; d && debut < total; debut += trames_pas) {
    const long long fin = std::min(debut + lues, total);
    double somme = 0;
    for (long long i = debut * canaux; i < fin * canaux; i++) somme += std::abs(lit_echantillon(d + i * nb, nb));
    v.push_back(static_cast<float>(somme / (static_cast<double>(fin - debut) * canaux * pleine_echelle(nb))));
  }
  if (max) {
    const float m = v.empty() ? 0 : *std::max_element(v.begin(), v.end());
    if (m > 0)
      for (float& x : v) x /= m;
  }
  return ecrit_floats(name, v);
}
