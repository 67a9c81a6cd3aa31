// What the files of the interaction loop share among themselves.
#pragma once
#include "interaction/loop_state.h"
#include "kernel/word.h"

// Slots: _F<n> then P_fonc<n> with the count of images as argument. A
// failure prints the function's name; negative.
int run_slot(int n);
// The two halves: the hook _F<n>, the slot P_fonc<n>.
int run_hook(int n);
int run_user(int n);
// The Raz_fonc check point: all seven slots cleared when it is set.
void point_de_controle();
// `interaction func(...)`.
int INTERACTION_FUNC(word* s, const word* lim);
// A function named by text, or 0 after the report of an unknown name.
word fonction_nommee(const char* name);
// Runs a function by handle with the count of images as its argument; 0
// when there is none.
int run_fonction(word h);

// The options of init_interaction over the command's items; negative when
// the command stops (after a report).
int options_init(word* block);

// The CONTINUE/X panel: configured by a command, or (null) drawn and
// asked: 0 nothing, 1 CONTINUE, 2 X (the panel is then off).
int INTERACTION_MOUSE(word* block, const word* lim);
// The buttons of the loop, drawn; a hit runs its text. Negative when the
// text failed.
int dessine_boutons();

// Keyboard and mouse of the window.
void touche(unsigned char key, int x, int y);
void bouton_souris(int button, int state, int x, int y);
void glisse_souris(int x, int y);
void survol_souris(int x, int y);
// The pointer handed to the scene for MOD_b's mouse factors, and the
// outline of their frame (y up).
void pointeur_scene();
void cadre_souris(const float frame[4]);
// Step 25 of an image: clicks, drag and hover brought up to date.
void souris_image();
// A line typed in the window in a box, and the same after a caller's text
// (or, with `echelle`, typed in a scale field); negative after a report.
std::string GET_ASCII(const BoiteSaisie& b);
int KEYBOARD_INPUT(const char* texte, const BoiteSaisie& b, bool echelle, std::string& lu);
// The word of a tool or a mode that is not built, reported; negative.
int non_construit(int code);
// Empties the keyboard line.
void efface_ligne();
// `interaction ascii ...`.
int INTERACTION_ASCII(word* s, const word* lim);
// Runs a text as a console line.
int execute_ligne(const char* text);

// Manual motions by text (`interaction interaction("rotx")`) and the eye
// presets (`above`, `behind`, `below`, `front`).
int mouvement_manuel(word* s, const word* lim);
int preset_oeil(int code);
// The menus of the right button, built from the menu text; freed.
void generer_menu_interaction();
void libere_menus();
// The drawing of the designation (the axes of a preset, the designated
// object's mark).
void EXEC_DESIGNE();

// The title image (while title images are counted) or the title overlay.
void dessine_titre();
// The console view (see mode): the keyboard line at the window's foot.
void dessine_ligne_clavier();
// The kept `generate` block, run; negative on failure.
int generate_image();
// The record of keys: started on a file name, replayed from one; each key
// noted while recording; the keys of the current image replayed. The
// gauges of step 31; negative on failure.
int enregistre(const char* name);
int relit(const char* name);
// The record or replay asked for before the loop, started with it.
int enregistrement_du();
void note_touche(unsigned char key);
void rejoue_touches();
int jauges();
// The beep path: the note of the table at the current position, played;
// the position moved on.
float note_courante();
void bip();
// DATE.log.
// Recordings of the loop's images (video.cpp): the command, the image
// recorded before its swap, and the stop with everything written.
int INTERACTION_VIDEO(word* s, const word* lim);
void film_image();
void film_arret();
// fin_interaction's part: at once, or after the image under way.
void film_fin_boucle();
void stamp_debut();
void ecrit_date_log();
// The time of day as hour, minute, second.
void heure(int* h, int* m, int* s);
