// Recordings of the loop's images: `interaction video`.
//
//   interaction video[(n)] name("shot") format("png")
//       records every image the loop draws from its next image on, as
//       shot0001.png, shot0002.png ... (more places past 9999), one file
//       an image, none dropped or doubled: the loop waits for each write.
//   format("mp4") or format("webm"), or a name ending so: one film, the
//       raw images piped to the ffmpeg program at the loop's image rate.
//   video(n) stops after n images; else the recording lasts until the
//       loop ends (Escape, time(n), a failing stage, Ctrl-C, bye...).
//   interaction video       the images recorded so far
//   interaction end video   stops it, all written.
#include <cstdio>
#include <cstring>
#include <new>
#include <string>

#include "image/file_numbers.h"
#include "image/png_frames.h"
#include "interaction/interaction.h"
#include "interaction/internal.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/args.h"
#include "kernel/values.h"
#include "platform/process.h"
#include "platform/program_pipe.h"
#include "platform/safe_write.h"
#include "render/picture.h"

namespace {

constexpr int PLACES = 4;          // shot0001.png
constexpr int FILM_RATE_UNPACED = 25;

struct Format {
  const char* name;
  FilmFormat format;
};
constexpr Format FORMATS[] = {{"png", FILM_PNG}, {"mp4", FILM_MP4}, {"webm", FILM_WEBM}};

const char* extension(FilmFormat f) { return f == FILM_MP4 ? ".mp4" : f == FILM_WEBM ? ".webm" : ".png"; }

bool format_nomme(const std::string& name, FilmFormat* f) {
  for (const Format& x : FORMATS)
    if (name == x.name) {
      *f = x.format;
      return true;
    }
  return false;
}

int usage() {
  voir_texte("interaction video(n) name(\"shot\") format(\"png\" or \"mp4\" or \"webm\")\a\n");
  return -1;
}

// The film's size: ffmpeg's coders want even sides; an odd one gets one
// row or column of padding.
const char* const PAD = "vflip,pad=ceil(iw/2)*2:ceil(ih/2)*2";

bool ffmpeg_start(Film& f) {
  char size[32], rate[16];
  std::snprintf(size, sizeof size, "%dx%d", f.w, f.h);
  std::snprintf(rate, sizeof rate, "%d", f.cadence);
  const std::string out = f.base + extension(f.format);
  const char* mp4[] = {"-c:v", "libx264", "-preset", "veryfast", "-pix_fmt", "yuv420p", nullptr};
  const char* webm[] = {"-c:v", "libvpx-vp9", "-deadline", "realtime", "-cpu-used", "8", "-pix_fmt", "yuv420p", nullptr};
  const char* argv[32] = {"ffmpeg", "-loglevel", "error", "-y", "-f", "rawvideo", "-pix_fmt", "rgb24", "-s", size,
                          "-framerate", rate, "-i", "-", "-vf", PAD};
  int n = 16;
  for (const char* const* a = f.format == FILM_MP4 ? mp4 : webm; *a; a++) argv[n++] = *a;
  argv[n++] = out.c_str();
  argv[n] = nullptr;
  return pipe_start(argv, &f.ffmpeg);
}

// The buffers and, for a film, the program: at the first image, with the
// window's size then.
bool commence(Film& f) {
  if (!taille_fenetre(&f.w, &f.h)) return false;
  const InteractionState& L = loop();
  f.cadence = L.Periode_image > 0 ? L.Periode_image : FILM_RATE_UNPACED;
  try {
    f.pixels.assign(static_cast<size_t>(f.w) * f.h * 3, 0);
    // Room for every name to come: the number grows past its places only
    // after 9999 images.
    f.numero.reserve(32);
    f.nom.reserve(f.base.size() + 48);
    f.temp.reserve(f.base.size() + 48);
  } catch (const std::bad_alloc&) {
    err_debordement(nullptr);
    return false;
  }
  if (f.format == FILM_PNG) {
    if (png_frames_start(f.png, f.w, f.h)) return true;
    err_debordement(nullptr);
    return false;
  }
  if (ffmpeg_start(f)) return true;
  VOIR_CHAR("%s: ffmpeg does not start\a\n", f.base.c_str());
  return false;
}

// The picture file of image n: base, the number in 4 places (more when it
// needs them), the extension; written whole, then renamed into place.
bool ecrit_png(Film& f, size_t n) {
  const long long number = f.images + 1;
  int places = PLACES;
  for (long long m = number; m >= 10000; m /= 10) places++;
  char fmt[16];
  std::snprintf(fmt, sizeof fmt, "%dD", places);
  format_numerique(fmt, number, f.numero);
  f.nom.assign(f.base).append(f.numero).append(".png");
  f.temp.assign(f.nom).append(".part");
  if (write_whole_file(f.nom.c_str(), f.temp.c_str(), f.png.file.data(), n) == WriteFault::none) return true;
  VOIR_CHAR("%s: the picture cannot be written: the recording stops\a\n", f.nom.c_str());
  return false;
}

}  // namespace

void film_image() {
  InteractionState& L = loop();
  Film& f = L.film;
  if (f.etat == 1) f.etat = commence(f) ? 2 : 0;
  if (f.etat != 2) return;
  int w = 0, h = 0;
  if (!taille_fenetre(&w, &h) || w != f.w || h != f.h) {
    voir_int2("the window is now %d by %d: ", w, h);
    voir_int("the recording stops after %d images\a\n", f.images);
    film_arret();
    return;
  }
  // The image as it is about to be swapped, even when the loop has just
  // ended and drawing went back to the front buffer.
  pixels_rgb(f.pixels.data(), w, h, true);
  bool ok;
  if (f.format == FILM_PNG) {
    const size_t n = png_frames_encode(f.png, f.pixels.data());
    ok = n > 0 && ecrit_png(f, n);
  } else {
    ok = pipe_write(&f.ffmpeg, f.pixels.data(), f.pixels.size());
    if (!ok) voir_int("ffmpeg stopped reading: the film ends after %d images\a\n", f.images);
  }
  if (ok) f.images++;
  if (!ok || (f.compte > 0 && f.images >= f.compte)) film_arret();
}

void film_arret() {
  Film& f = loop().film;
  f.arret = 0;
  if (f.etat == 0) return;
  const int etat = f.etat;
  f.etat = 0;
  png_frames_end(f.png);
  std::vector<uint8_t>().swap(f.pixels);
  if (etat == 2 && f.format != FILM_PNG && pipe_finish(&f.ffmpeg) != 0)
    VOIR_CHAR("%s: ffmpeg failed: the film may be incomplete\a\n", (f.base + extension(f.format)).c_str());
}

void film_fin_boucle() {
  Film& f = loop().film;
  if (f.dans_image) f.arret = 1;
  else film_arret();
}

int INTERACTION_VIDEO(word* s, const word* lim) {
  Film& f = loop().film;
  const char* name = arg_text(s, KW_name);
  if (!name && !arg_of(s, KW_format) && !arg_of(s, KW_video)) return build_float(s, lim, static_cast<float>(f.images));
  if (!name || !*name) return usage();
  std::string base = name;
  FilmFormat format = FILM_PNG;
  // A name's own extension, if it names a format, gives the format.
  const size_t dot = base.rfind('.');
  if (dot != std::string::npos && base.find('/', dot) == std::string::npos && format_nomme(base.substr(dot + 1), &format))
    base.erase(dot);
  if (const word* v = arg_of(s, KW_format)) {
    const char* t = value_text(v);
    if (!t || !format_nomme(t, &format)) return usage();
  }
  const int compte = arg_int(s, KW_video, 0);
  if (compte < 0) return usage();
  if (format != FILM_PNG && !program_on_path("ffmpeg")) {
    voir_texte("films need the ffmpeg program, which is not installed (Debian: apt-get install ffmpeg);"
               " format(\"png\") records pictures without it\a\n");
    return -1;
  }
  film_arret();
  f.base = base;
  f.format = format;
  f.compte = compte;
  f.images = 0;
  f.etat = 1;
  return build_nil(s);
}
