#include "sound/sound_files.h"

#include <cmath>
#include <cstring>

#include "kernel/file_out.h"
#include "kernel/keywords.h"
#include "kernel/kernel.h"
#include "kernel/property.h"
#include "kernel/report.h"
#include "platform/process.h"
#include "scene/removal.h"
#include "sound/sound_object.h"
#include "sound/wav_header.h"

namespace {

// The format text kept in `dim`, or "" before GET_DIM_AUDIO.
const char* texte_dim(const Objet* o) {
  const word* d = get_val_1(o->local, KW_dim);
  if (!d || tag(d) != T_CHAR || size(d) < 4 + DIM_OCTETS / 4) return "";
  return text(d);
}

int format_de(const Objet* o) {
  const word* m = get_val_1(o->local, KW_meta);
  return m && size(m) >= 4 + META_MOTS ? m[4 + MW_FORMAT] : 1;
}

void retire(Objet* o) { rem_objet_id(KW_audio, o->id); }

}  // namespace

const char* nom_format(int format) {
  switch (format) {
    case 1: return "PCM";
    case 3: return "IEEE_FLOAT";
    case 6: return "ALAW";
    case 7: return "MULAW";
    case 0xFFFE: return "EXTENSIBLE";
    default: return "UNKNOWN";
  }
}

Objet* READ_AUDIO(int id, const std::string& name) {
  std::string bytes;
  if (!file_read_all(name, bytes)) {
    err_pas_trouve(name.c_str());
    return nullptr;
  }
  Objet* o = audio_nouveau(id);
  uint8_t* b = o ? audio_alloue(o, bytes.size()) : nullptr;
  if (!b) {
    if (o) retire(o);
    TRACE_FAIL("READ_AUDIO()");
    return nullptr;
  }
  std::memcpy(b, bytes.data(), bytes.size());
  Header(o) = HEADER_GENERE;
  if (READ_WAV_HEADER(o, name) < 0) {
    TRACE_FAIL("READ_AUDIO()");
    return nullptr;
  }
  o->unsaved = 0;
  return o;
}

int READ_WAV_HEADER(Objet* o, const std::string& name) {
  WavEntete e;
  switch (lit_entete_wav(audio_octets(o), static_cast<size_t>(Size(o)), e)) {
    case WavLecture::ok:
      break;
    case WavLecture::pas_de_data:
      voir_texte("unable to find \"data\"\a\n");
      retire(o);
      return -1;
    default:
      VOIR_CHAR("%s ", name.c_str());
      voir_message(0, MES_BADLY_FORMATTED_FILE);
      retire(o);
      return -1;
  }
  Nb_octet(o) = e.Nb_octet;
  Header(o) = e.Header;
  Rate(o) = e.Rate;
  Channel(o) = e.Channel;
  Bits(o) = e.Bits;
  Images(o) = e.Images;
  if (ecrit_meta(o, e.format, static_cast<int>(name.size())) < 0 || GET_DIM_AUDIO(o) < 0) {
    retire(o);
    TRACE_FAIL("READ_WAV_HEADER()");
    return -1;
  }
  return 0;
}

int WRITE_AUDIO(Objet* o, const std::string& name) {
  const uint8_t* b = audio_octets(o);
  if (!b) return -1;
  if (!ecrit_fichier(name, b, static_cast<size_t>(Size(o)))) {
    TRACE_FAIL("WRITE_AUDIO()");
    return -1;
  }
  o->unsaved = 0;
  return 0;
}

int GET_DIM_AUDIO(Objet* o, long long* samples, double* time) {
  int n = Nb_octet(o);
  if (n == 8 || n == 16 || n == 32) n /= 8;
  if (n != 1 && n != 2 && n != 4) {
    voir_int("data size %d != (1,2,4, 8,16,32)\a\n", Nb_octet(o));
    return -1;
  }
  Nb_octet(o) = n;
  if (!audio_octets(o) && !audio_alloue(o, static_cast<size_t>(Size(o) > 0 ? Size(o) : 0))) return -1;
  bloc d = set_val_1(o, KW_dim, DIM_OCTETS / 4);
  if (!d) return -1;
  tag(d) = T_CHAR;
  std::memset(d + 4, 0, DIM_OCTETS);
  std::strncpy(text(d), nom_format(format_de(o)), DIM_OCTETS - 1);
  const long long frames = trames(o);
  if (samples) *samples = frames;
  if (time) *time = Rate(o) > 0 ? static_cast<double>(frames) / Rate(o) : 0;
  return 0;
}

namespace {

// The labels of the two printed forms; `octets` is printed by one only.
struct Libelles {
  const char *format, *channel, *data, *rate, *header, *file, *octets, *samples, *time;
};
constexpr Libelles EDIT = {"format: %s\n", "channel: %d\n", "data_size: %d\n", "sample_rate: %d\n",
                           "header_size: %d\n", "file_size: %d\n", nullptr, "sample_number: %d\n", "time: %f\n"};
constexpr Libelles EDIT_DIM = {"format = %s\n", "channel = %d\n", "date size = %d\n", "sample rate = %d\n",
                               "header size = %d\n", "file size = %d\n", "octet number = %d\n",
                               "sample number = %d\n", "time = %f\n"};

// The data size printed is the data bytes, Size - Header.
int edite(Objet* o, const Libelles& l) {
  long long samples = 0;
  double time = 0;
  if (GET_DIM_AUDIO(o, &samples, &time) < 0) return -1;
  VOIR_CHAR(l.format, texte_dim(o));
  voir_int(l.channel, Channel(o));
  voir_int(l.data, static_cast<int>(octets_donnees(o)));
  voir_int(l.rate, Rate(o));
  voir_int(l.header, Header(o));
  voir_int(l.file, Size(o));
  if (l.octets) voir_int(l.octets, Nb_octet(o));
  voir_int(l.samples, static_cast<int>(samples));
  voir_float(l.time, static_cast<float>(time));
  return 0;
}

}  // namespace

int EDIT_AUDIO_1(Objet* o) { return edite(o, EDIT); }
int EDIT_DIM_AUDIO_1(Objet* o) { return edite(o, EDIT_DIM); }

Objet* GENERATE_AUDIO_DIM(int id, float seconds, int channels) {
  if (!(seconds > 0) || seconds > 3600 || channels < 1 || channels > 8) {
    voir_texte("generate audio(id) dim(seconds[, channels])\a\n");
    return nullptr;
  }
  const int nb_octet = 2;
  const long long frames = std::llround(static_cast<double>(seconds) * RATE_DEFAUT);
  const long long size = ENTETE_GENERE + frames * channels * nb_octet;
  Objet* o = audio_nouveau(id);
  uint8_t* b = o ? audio_alloue(o, static_cast<size_t>(size)) : nullptr;
  if (!b) {
    if (o) retire(o);
    TRACE_FAIL("GENERATE_AUDIO_DIM()");
    return nullptr;
  }
  ecrit_entete_wav(b, size, channels, nb_octet);
  Nb_octet(o) = nb_octet;
  Header(o) = HEADER_GENERE;
  Rate(o) = RATE_DEFAUT;
  Channel(o) = channels;
  Bits(o) = nb_octet * 8;
  const long long secondes = frames / RATE_DEFAUT;
  Images(o) = static_cast<int>(secondes < 1 ? 1 : secondes) * IMAGES_SECONDE;
  if (ecrit_meta(o, 1, 0) < 0 || GET_DIM_AUDIO(o) < 0) {
    retire(o);
    return nullptr;
  }
  o->unsaved = 1;
  return o;
}
