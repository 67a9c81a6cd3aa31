// The device table: numbered slots 1 to 100, each an open peripheral of
// one kind (a file, shared memory, a serial port, a socket, MIDI, the
// mouse, live audio, timers, a table of numbers), read and written by the
// `device` command. One struct holds it all, reached through devices().
#pragma once
#include <string>
#include <vector>

#include "device/ucs_table.h"
#include "kernel/word.h"
#include "platform/sockets.h"

struct MidiIn;
struct OscDevice;

constexpr int NB_PERIPH = 100;
constexpr int MEM_OCTETS = 1024;  // the shared memory view
constexpr int MEM_MOTS = MEM_OCTETS / 4;
constexpr int PORT_DEFAUT = 8889;

enum DeviceKind : int {
  DEV_LIBRE = 0,
  DEV_LIR = 1,
  DEV_MEM = 2,
  DEV_COM = 3,
  DEV_TCP_CLIENT = 4,
  DEV_UDP_CLIENT = 5,
  DEV_MID = 6,
  DEV_TCP_SERVEUR = 7,
  DEV_UDP_SERVEUR = 8,
  DEV_MOU = 9,
  DEV_AUD = 10,
  DEV_ITR = 14,
  DEV_DAT = 15,
  DEV_UCS_CLIENT = 16,
  DEV_UCS_SERVEUR = 17,
  DEV_TIM = 18,
  DEV_AUTOMATE = 19,
  // Beyond the built-in kinds: OSC through liblo.
  DEV_OSC_CLIENT = 20,
  DEV_OSC_SERVEUR = 21,
};

struct Periph {
  int Type = DEV_LIBRE;
  std::string Nom;          // file, port, host or shared memory name
  int Sock = -1;            // socket or serial handle
  float Module = 0;         // the modulus of the last value read
  int Dim = 0;              // values read at a time, from `dim`
  std::vector<word> Buffer; // Dim zeroed words when Dim is set; MEM: the block last written
  word* Mem = nullptr;      // the shared memory view
  std::vector<word> Bloc;   // MEM: the block read back; DAT: the table
  int Vitesse = 9600;
  int Timeout = 1000;       // milliseconds
  int Format = T_CHAR;      // tag of a read's result: T_CHAR or T_FLOAT
  int Debug = 0;
  int Valider = 0;          // 1 while the slot is open
  int Valeur = 0;           // `validate(v)`
  float Coe = 1;
  float Dep = 0;            // `tran`

  // What the kinds keep beside the record.
  std::string Nom_local;    // a client's second `name`
  int Port = 0;
  int Bloquant = 0;         // `close`: a socket read waits for data
  int Delai_lecture = -1;   // ms such a read waits at most; -1 for ever
  int Inverse = 0;          // `inv`: the byte order of floats swapped
  float Attente = 0;        // `wait(t)`, seconds: MEM answers are waited for
  char Format_echange[3] = "";  // `format`: the two letters of a datagram's form
  NetAddress Distant{};     // the peer of a UDP device
  int Distant_pret = 0;     // the peer is known
  int Colonnes = 0, Lignes = 0;  // DAT: the table's shape
  int Ligne = 1, Pas = 1;   // DAT: the next row read (from 1) and the step
  double Ouverture = 0;     // ITR: the clock's seconds at opening
  MidiIn* Midi = nullptr;
  OscDevice* Osc = nullptr;  // OSC: the end, its queue and its routes
  unsigned char Midi_message[3] = {0, 0, 0};
  int Midi_recu = 0;        // a MIDI message has come
  int Sp_dep = 0;           // `format("SP", dep, size)`: offset and size wanted
  int Sp_taille = -1;       // -1: the whole datagram
};

// What the sound subsystem lends to the "AUD" kind; null while it has none.
struct DeviceAudioHooks {
  // Starts capture with the sampling window given by `dim`; 0 or negative.
  int (*demarrer)(int dim) = nullptr;
  // The current (mean, min, max); negative when the capture is off.
  int (*lire)(float out[3]) = nullptr;
  // The `audio` option of an `ini`: the command handed over.
  int (*reglage)(word* s, const word* lim) = nullptr;
};

// The device whose first three values stand for the pointer at each
// image (`device(n) cin`), with the settings of its read and the area
// the read fills, made once when a device is marked.
struct DeviceCin {
  int numero = 0;              // 0: none
  int format = T_CHAR;         // `float` or `char` of the marking command
  char echange[3] = "";        // `format`: a datagram's two letters
  int sp_dep = 0, sp_taille = -1;
  std::vector<word> zone;
};

struct DeviceState {
  Periph Table_periph[NB_PERIPH + 1];  // indexed by the device number; 0 unused
  double Timers[4] = {0, 0, 0, 0};     // "TIM": the clock's seconds at each reset
  DeviceAudioHooks audio;
  std::vector<unsigned char> Octets;   // the bytes of the value being written
  UcsState ucs;                        // the "UCS" exchange's records
  DeviceCin cin;
};

DeviceState& devices();
// The slot of device n, or null outside 1..100.
Periph* periph(int n);
// The slot of device n when it is open, or null.
Periph* periph_ouvert(int n);

// Frees every slot without a word (start-up).
void ini_devices();
// Closes slot n: "FERMETURE DEVICE %d\n", then its socket, view and
// blocks are released and the slot is free.
void fermer_device(int n);
// Prints slot n as `edit` and the opening show it.
void voir_device(int n);

// (v + `tran`) * `coe`.
inline float mappe(const Periph& p, float v) { return (v + p.Dep) * p.Coe; }
