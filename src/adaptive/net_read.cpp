// `generate network(id) read("file")`: patterns from a text file.
//
// One pattern a line: the motif's numbers, then ";" and the law's
// numbers (a line without ";" is a motif alone, for a map). Numbers are
// separated by blanks, tabs or commas; "#" starts a comment. With
// `format(nm, nl)` the file's numbers are one stream instead, cut into
// motifs of nm values each followed by a law of nl values (nl 0: motifs
// alone). `average(k)` replaces every k consecutive values of a pattern
// by their mean. The weights are then drawn again in the `mass` range
// with the `alea` mode.
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string>

#include "adaptive/net_commands.h"
#include "adaptive/net_internal.h"
#include "kernel/keywords.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "kernel/values.h"
#include "platform/files.h"

namespace {

constexpr size_t TAILLE_MAX = 64u << 20;  // bytes of a pattern file

bool lit_texte(const char* file, std::string& text) {
  OsFile* f = os_open(file);
  if (!f) {
    err_lecture(file);
    return false;
  }
  char buf[4096];
  for (size_t n; (n = os_read(f, buf, sizeof buf)) > 0;) {
    text.append(buf, n);
    if (text.size() > TAILLE_MAX) {
      os_close(f);
      err_octets(file, static_cast<long>(text.size()));
      return false;
    }
  }
  os_close(f);
  return true;
}

// The numbers of a piece of a line; false at a word that is no number.
bool nombres(const std::string& piece, std::vector<float>& out) {
  size_t p = 0;
  while (p < piece.size()) {
    while (p < piece.size() && (piece[p] == ' ' || piece[p] == '\t' || piece[p] == ',' || piece[p] == '\r')) p++;
    if (p >= piece.size()) break;
    size_t e = p;
    while (e < piece.size() && piece[e] != ' ' && piece[e] != '\t' && piece[e] != ',' && piece[e] != '\r') e++;
    const std::string w = piece.substr(p, e - p);
    char* end = nullptr;
    errno = 0;
    const float f = std::strtof(w.c_str(), &end);
    if (end == w.c_str() || *end != '\0' || errno == ERANGE || f != f) return false;
    out.push_back(f);
    p = e;
  }
  return true;
}

std::vector<float> moyennes(const std::vector<float>& v, int k) {
  if (k <= 1) return v;
  std::vector<float> out;
  for (size_t i = 0; i < v.size(); i += static_cast<size_t>(k)) {
    const size_t e = std::min(v.size(), i + static_cast<size_t>(k));
    float s = 0;
    for (size_t j = i; j < e; j++) s += v[j];
    out.push_back(s / static_cast<float>(e - i));
  }
  return out;
}

struct Motifs {
  std::vector<std::vector<float>> motif, law;
};

bool par_lignes(const char* file, const std::string& text, Motifs& m) {
  size_t p = 0;
  int line = 0;
  while (p < text.size()) {
    size_t e = text.find('\n', p);
    if (e == std::string::npos) e = text.size();
    std::string l = text.substr(p, e - p);
    p = e + 1;
    line++;
    if (const size_t c = l.find('#'); c != std::string::npos) l.resize(c);
    if (l.find_first_not_of(" \t\r,") == std::string::npos) continue;
    const size_t semi = l.find(';');
    std::vector<float> a, b;
    if (!nombres(l.substr(0, semi), a) || (semi != std::string::npos && !nombres(l.substr(semi + 1), b)) || a.empty()) {
      err_format(file, line);
      return false;
    }
    m.motif.push_back(a);
    if (semi != std::string::npos) m.law.push_back(b);
  }
  if (!m.law.empty() && m.law.size() != m.motif.size()) {
    err_format(file, line);
    return false;
  }
  return true;
}

bool par_format(const char* file, const std::string& text, int nm, int nl, Motifs& m) {
  std::string clean;
  for (size_t p = 0; p < text.size();) {
    size_t e = text.find('\n', p);
    if (e == std::string::npos) e = text.size();
    std::string l = text.substr(p, e - p);
    if (const size_t c = l.find('#'); c != std::string::npos) l.resize(c);
    clean += l + ' ';
    p = e + 1;
  }
  std::vector<float> all;
  if (!nombres(clean, all) || nm < 1 || nl < 0 || all.size() % static_cast<size_t>(nm + nl) != 0 || all.empty()) {
    err_format(file, 0);
    return false;
  }
  for (size_t k = 0; k < all.size(); k += static_cast<size_t>(nm + nl)) {
    m.motif.emplace_back(all.begin() + static_cast<long>(k), all.begin() + static_cast<long>(k) + nm);
    if (nl > 0) m.law.emplace_back(all.begin() + static_cast<long>(k) + nm, all.begin() + static_cast<long>(k + nm + nl));
  }
  return true;
}

std::vector<word> en_liste(const std::vector<std::vector<float>>& patterns, int k) {
  std::vector<word> l = liste_vide();
  for (const std::vector<float>& p : patterns) {
    const std::vector<float> v = moyennes(p, k);
    liste_ajoute(l, valeur_floats(v.data(), static_cast<int>(v.size()), static_cast<int>(v.size())).data());
  }
  return l;
}

}  // namespace

int lit_motifs_fichier(Objet* o, const char* file, word* s, NetOptions& opt) {
  std::string text;
  if (!lit_texte(file, text)) return -1;
  Motifs m;
  const bool ok = has_word(s, KW_format)
                      ? par_format(file, text, arg_int(s, KW_format, 0, 0), arg_int(s, KW_format, 0, 1), m)
                      : par_lignes(file, text, m);
  if (!ok) return -1;
  const int k = std::max(1, arg_int(s, KW_average, 1));
  if (!o->local && !local_ini(o)) return -1;
  if (!set_propr_1(o, KW_motif, en_liste(m.motif, k).data())) return -1;
  if (!m.law.empty() && !set_propr_1(o, KW_law, en_liste(m.law, k).data())) return -1;
  // A structure that no longer fits the patterns is made again.
  const Reseau r = trouve_reseau(o);
  int n1 = 0, nk = 0;
  for (const word* l : Parties{r.fac}) {
    if (!n1) n1 = elements(l);
    nk = elements(l);
  }
  const int mn = static_cast<int>(moyennes(m.motif[0], k).size());
  const int ln = m.law.empty() ? nk : static_cast<int>(moyennes(m.law[0], k).size());
  if (r.fac && (n1 != mn || nk != ln)) {
    rem_propr_1(o, KW_fac);
    rem_propr_2(o, KW_inv, KW_fac);
  }
  for (int code : {static_cast<int>(KW_matrix), -static_cast<int>(KW_matrix), static_cast<int>(KW_neuron),
                   static_cast<int>(KW_validate), static_cast<int>(KW_near)})
    rem_propr_1(o, code);
  opt.read = true;
  return 0;
}
