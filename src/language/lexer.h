// Lexical routines shared by source preparation, the compiler and the file
// readers, and the two control marks that may stand in prepared text:
//   line mark:   byte 3, then the line number as 4 decimal digits, each
//                stored as its value + 1 so that none is NUL (5 bytes);
//   origin mark: byte 2, then the name of the object the following text
//                came from, padded with blanks (80 bytes).
// Every scanner steps over a mark whole, and never past a NUL.
#pragma once
#include <cstddef>

constexpr char MARQUE_LIGNE = 3;
constexpr int LONG_MARQUE_LIGNE = 5;
constexpr char MARQUE_ORIGINE = 2;
constexpr int LONG_MARQUE_ORIGINE = 80;
// Four digits hold no more: later lines all carry this number.
constexpr int LIGNE_MAX = 9999;
constexpr int LONG_MOT = 256;  // capacity given to lire_mot by every caller

// Steps over blanks and tabs.
const char* sauter_blancs(const char* s);
// Copies the word at *s (after blanks and tabs) into `dest` and advances
// *s past it. Returns its length + 1, 0 when the word is empty (NUL, byte 2,
// newline, ";" or "{" first), or -1 after OVERFLOW when it does not fit.
int lire_mot(char* dest, const char** s, int capacite);
// Steps to the next character that ends a word for the compiler.
const char* sauter_mot(const char* s);
// 0 when the text starts with the word.
int comparer_mot(const char* mot, const char* texte);
// Steps over blanks, tabs, newlines and comments, adding newlines to
// *ligne. Null after message 64 for an unterminated comment.
const char* sauter_commentaires(const char* s, int* ligne);
// Keyword lookup over every synonym of every vocabulary: the code
// (vocabulary * 200 + index), or -1 when nothing matches.
int chercher_commande(const char* mot, int* voc, int* code);

inline char* sauter_blancs(char* s) { return const_cast<char*>(sauter_blancs(static_cast<const char*>(s))); }
inline int lire_mot(char* dest, char** s, int capacite) {
  return lire_mot(dest, const_cast<const char**>(s), capacite);
}

// A bounded text writer: bytes go to [debut, fin) and one more byte is kept
// for the final NUL. A write that does not fit sets `plein` and is dropped,
// so a stage only tests `plein` at its own pace.
struct Sortie {
  char* debut = nullptr;
  char* p = nullptr;
  char* fin = nullptr;
  char* marque = nullptr;  // start of the line mark written last, if p is just behind it
  bool plein = false;
};

Sortie sortie_sur(char* debut, char* fin);
void ecrire(Sortie& o, char c);
void ecrire_n(Sortie& o, const char* s, size_t n);
void ecrire_texte(Sortie& o, const char* s);
// NUL at p; returns false (and sets plein) when there is no room.
bool terminer(Sortie& o);
inline size_t libre(const Sortie& o) { return static_cast<size_t>(o.fin - o.p); }

// Writes a line mark. A mark written directly behind the previous one
// replaces it when the number is 3 or more, so runs of empty lines cost one.
void marquer_ligne(Sortie& o, int ligne);
// Writes an origin mark naming `nom` (cut at blank, tab, "(" or control byte).
void marquer_origine(Sortie& o, const char* nom);
// Number held by the line mark at p.
int numero_ligne(const char* p);
// Length of the mark at p (0 when there is none), shortened so that a
// mark cut by a NUL is never stepped past.
int longueur_marque(const char* p);
inline const char* sauter_marque(const char* p) { return p + longueur_marque(p); }
// Number of the last line mark that starts before `fin`, walking from
// `debut`; `defaut` when there is none.
int ligne_avant(const char* debut, const char* fin, int defaut);
