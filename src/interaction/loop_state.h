// The state of the interaction loop: one struct, reached through loop(),
// with the names the loop's description gives its variables.
//
// init_interaction resets exactly what its list names (the clock, the
// keyboard line, `foc`, the image period and its counter, the title count
// and the title seen, the buttons, the window rectangle, the panel's place,
// the swap, the record buffers, and Nb_image_reste from Nb_image_max);
// everything else keeps its value from one run of the loop to the next:
// the user-function slots, Gel_interaction, Cpt_image_titre,
// Titre_plein_ecran, the panel's switch, the key bindings.
#pragma once
#include <string>
#include <vector>

#include "image/png_frames.h"
#include "kernel/word.h"
#include "platform/program_pipe.h"

constexpr int NB_SLOTS = 7;          // P_fonc0 to P_fonc6
constexpr int NB_BOUTONS = 100;
constexpr int LIGNE_CLAVIER_MAX = 128;       // characters of the keyboard line
constexpr int DIM_ENREGISTREMENT = 100000;  // words of each record buffer
constexpr float DESIGNATION_LIBRE = 2000000.0f;

// A button of the loop: a text drawn at a place; a click on it runs the
// text as a command line.
struct Bouton {
  std::string texte;
  float x = 0, y = 0;          // base line's start, pixels from the window centre
  float col[3] = {1, 1, 1};
};

// The box of a line typed in the window: its place (pixels from the
// window centre), back and frame colours (a negative first component:
// not drawn) and the text's colour.
struct BoiteSaisie {
  float poi[2] = {0, 0};
  float fond[3] = {-1, -1, -1};
  float cadre[3] = {-1, -1, -1};
  float col[3] = {1, 1, 1};
};

// An `ascii` binding: a character and what it runs.
struct Liaison {
  char car = 0;                // 0: a binding without a character
  int kind = 0;                // KW_func or KW_stock
  word function = 0;           // handle of the function object
  word stock = 0;              // the stock entry of a `stock` binding
};

// A recording of the images the loop draws (`interaction video`): one
// numbered picture file an image, or one film made by ffmpeg from the raw
// frames. The buffers are taken when the recording starts.
enum FilmFormat { FILM_PNG, FILM_MP4, FILM_WEBM };
struct Film {
  int etat = 0;                // 0 none, 1 asked for (starts at the next image), 2 recording
  FilmFormat format = FILM_PNG;
  std::string base;            // the name less its extension: "shot"
  int compte = 0;              // images asked for; 0: until the loop ends
  int images = 0;              // images recorded so far
  int cadence = 25;            // the film's images a second
  int w = 0, h = 0;
  int dans_image = 0;          // the loop is inside an image
  int arret = 0;               // stop once the image under way is recorded
  std::vector<uint8_t> pixels; // the image read back, RGB from the bottom row
  PngFrames png;
  std::string numero, nom, temp;  // the number, the file's name, its temporary name
  ProgramPipe ffmpeg;
};

struct InteractionState {
  // Images and time.
  int Nb_image_max = 0;        // images asked for, 0 without limit
  int Nb_image_reste = 0;      // images still to compute
  int Temps_fin = 0;           // never written: "time out" stands and never fires
  int Temps_courant = 0;       // ms since the loop started, read at each idle call
  long long Temps_debut = 0;   // the clock at the start of the loop
  long long t0 = 0;            // the clock at the head of the idle call
  int Periode_image = 75;      // images a second; 0: no pacing
  float Images_par_seconde = 0;
  int no_pacing = 0;           // pacing disabled (set by a video output)
  int Nb_anim = 0;             // cleared at the start of each image
  int images = 0;              // images since the loop started

  // Freeze, title, full screen.
  int Gel_interaction = -1;    // <0 simulate, 0 one more then frozen, >0 frozen
  int Nb_image_titre = 75;
  int Cpt_image_titre = 0;
  int titre_vu = 0;
  int titre = 0;               // the `titre` given to init_interaction
  int batch = 0;               // the start-up batch word (-1 with a launching text)
  std::string Titre_texte;
  int Titre_plein_ecran = 0;   // full-screen countdown, negative when idle
  int lumieres_differees = 0;  // the delayed light set-up: 0, 1, then -1

  // The real-time loop's own mode word (276 while it runs).
  int Mode_graphique = 0;
  int arret_en_cours = 0;      // fin_interaction is running

  // User functions: handles of function objects, 0 when empty; the
  // linked-in hooks beside them.
  word P_fonc[NB_SLOTS] = {};
  int Raz_fonc = 0;
  int (*F[6])() = {};          // _F0 to _F5

  // The CONTINUE/X panel.
  int Panneau_continue = 0;
  int avance = 1, panneau = 0;
  int panneau_mode = 1;        // 1: a click is taken once
  float panneau_x = 0, panneau_y = 0;
  float panneau_col[3] = {1, 1, 1};
  float panneau_fond[3] = {-1, -1, -1};
  float panneau_cadre[3] = {-1, -1, -1};

  // Image period: the screen is painted over that many images between
  // clears; the period function runs at the end of each period, the
  // post-image function after the swap of the same image.
  int periode = 1;
  int cpt_periode = 0;
  word fonction_periode = 0;
  word fonction_apres = 0;

  int swap = 1;
  int no_cull = 0;
  int menus = 1;               // the menus flag (second value of `time`)
  int troisieme = 0;           // third value of `time`, kept
  std::string texte_menu;      // entries joined by "|"
  int menu_racine = 0;
  std::vector<int> sous_menus;
  std::vector<std::string> entrees_menu;  // the texts of the menu string's entries

  // Keyboard.
  char Ligne_clavier[LIGNE_CLAVIER_MAX + 1] = {};
  int longueur = 0;
  char Ligne_validee[LIGNE_CLAVIER_MAX + 1] = {};
  char Car_prompt = '<';
  int entree_clavier = 1;      // the key input is on
  int voir = 0;                // the console view (see mode)
  int attend_saisie = 0;       // a line is awaited in a box (`ascii poi`)
  int derniere_touche = 0;
  std::vector<Liaison> liaisons;

  // Mouse, in pixels from the window centre, y up.
  int bouton = -1;             // 0 left, 1 middle, 2 right, -1 none
  int enfonce = 0, premier_appui = 0;
  int clic[2] = {0, 0}, glisse[2] = {0, 0}, survol[2] = {0, 0};
  int clic_pris[2] = {0, 0};   // the two click-latched flags
  int dep[2] = {0, 0};         // motion since the last drag event
  float designation[2] = {DESIGNATION_LIBRE, 0};
  int Mode_designation = 0;    // 313 pull, 322..325 rotations, 350 tran; 3..22 menu codes
  int preset = 0;
  word designe = 0;            // handle of the designated volume
  int sommet = 0;              // designated vertex (pull)
  float coe = 1;               // motion coefficient
  int hit_continue = 0;        // a press not yet taken by the panel
  int appui[2] = {0, 0};       // where the last press was

  // Buttons and the rectangle of `interaction limit`.
  std::vector<Bouton> boutons;
  int limite_on = 0;
  float limite[4] = {0, 0, 0, 0};
  float limite_col[3] = {1, 1, 1};

  // The block of `interaction generate`, run once an image on a copy.
  std::vector<word> generate, generate_zone;

  // The record of the keys typed in the window: pairs (image, key) in the
  // first buffer, the name of its file in the second; 242 records, -242
  // replays.
  std::vector<word> enregistrement_touches, enregistrement_texte;
  int nb_touches = 0;          // pairs held
  size_t relecture = 0;        // the next pair to replay
  std::string fichier_enregistrement;
  int enregistrement_du = 0;   // asked for before the loop: 242 or -242 at its start
  int mode_enregistrement = 0;
  int image_enregistrement = 0;
  int mode_play = 0;
  // A wait of the record or the replay: images counted up to its limit
  // (0: none) while "WAIT " stands in place of the gauge.
  int attente = 0;
  int cpt_attente = 0;

  // The note table of the beep path: frequencies read at a moving
  // position, one note of `duree_note` ms an image; empty: no beep.
  std::vector<float> notes;
  float position_note = 0;
  float pas_note = 1;
  int duree_note = 0;

  // A key capture rectangle (pixels from the window centre, x0 y0 x1 y1):
  // a key typed with the pointer strictly inside it is kept for it.
  int capture_on = 0;
  float capture[4] = {0, 0, 0, 0};
  int touche_capturee = 0;

  // The recorded mouse path of `line`: three numbers an image.
  std::vector<float> chemin;
  size_t chemin_pos = 0;
  float souris_chemin[3] = {0, 0, 0};

  // DATE.log.
  int log_mode = 0;            // 0 off; below 1 "wb", else "ab"
  int debut_h = 0, debut_m = 0, debut_s = 0;

  // `network`: the learning screen instead of the loop.
  int reseau = 0;
  word reseau_objet = 0;
  int reseau_images = 0;
  int reseau_debut = 0;        // the pass it starts at, 0: it waits for the menu

  // Steps that later subsystems register; a null one is not built and
  // costs one test.
  // The `cin` device's first three values into xyz: 1 when it gave
  // some, 0 when none (no such device, or nothing read), negative after a
  // report.
  int (*lire_cin)(float xyz[3]) = nullptr;
  // The messages that came by the network, each routed to its function;
  // negative when one failed.
  int (*messages)() = nullptr;
  void (*idle_reseau)() = nullptr;           // mode 298
  void (*idle_souris)() = nullptr;           // mode 294
  void (*idle_play)() = nullptr;             // mode 310
  int (*joue_son)(int number) = nullptr;     // the sounds of key bindings
  int (*exec_menu)() = nullptr;              // EXEC_MENU, the object menus
  int (*echelles)() = nullptr;               // the scales, drawn and read
  int (*exec_brush)() = nullptr;             // EXEC_BRUSH(0)
  int (*textes)() = nullptr;                 // the text objects shown
  int (*exec_stock)() = nullptr;             // EXEC_STOCK
  int (*stock_audio)() = nullptr;            // the sounds' step: STOCK_AUDIO, playing sounds
  int (*exec_audio)() = nullptr;             // EXEC_AUDIO, the audio step
  int (*stock_touche)(word binding) = nullptr;  // exec_INTERACTION_STOCK
  // A tone of the audio back end; false when it has no device (the bell rings).
  bool (*bip)(float frequency, int ms) = nullptr;
  // A scale of type "name" with `input` at that place: the text typed in it.
  int (*echelle_saisie)(const float poi[2], std::string& text) = nullptr;
  int (*outil_palette)() = nullptr;          // the palette's own tool
  int (*fonction_palette)(int n) = nullptr;  // the palette's user functions 1 to 4

  Film film;

  // The launch list: command files run in turn in interpreter mode.
  std::vector<std::string> lance;
  size_t lance_pos = 0;
  int lance_flag = 0;          // set by the `see` start-up option
};

InteractionState& loop();
