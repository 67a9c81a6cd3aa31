// Text files of the language: `fopen` gives a slot number, `fclose` frees
// it, `fread` reads the rest of a file (or a whole named file), `fwrite`
// writes texts and numbers, `getline` and `getword` read one line or one
// word. Files are read through platform/files.h and written safely
// (kernel/file_out.h): a file written replaces the old one at `fclose`.
#include <cstdio>

#include "kernel/file_out.h"
#include "kernel/keywords.h"
#include "kernel/report.h"
#include "language/args.h"
#include "language/eval.h"
#include "language/fct0.h"
#include "platform/files.h"

namespace {

OpenFile* slots() { return fct0_state().files; }

// The argument of the first item as a value, or null when it has none.

// The slot number held by the first element of a FLOAT value, or -1.
int slot_number(const word* v) {
  if (!v || tag(v) != T_FLOAT || elements(v) < 1) return -1;
  return entier(getf(v, 0));
}

OpenFile* open_slot(int num) {
  OpenFile* f = num >= 1 && num <= FILE_SLOTS ? &slots()[num] : nullptr;
  return f && (f->in || f->out) ? f : nullptr;
}

// The file open for reading named by the argument; null after the report.
OsFile* file_of(Fct0Call& c) {
  const word* v = fct0_argument(c);
  OpenFile* f = open_slot(slot_number(v));
  if (!f || !f->in) err_objet(c.first[2], v, -1, 0, nullptr);
  return f ? f->in : nullptr;
}

// Closes a slot; a file written is put in place. False when its writing
// failed (reported once).
bool close_slot(OpenFile& f) {
  os_close(f.in);
  WriteFault fault = f.out ? safe_commit(f.out) : WriteFault::none;
  if (!f.reported) signale_ecriture(f.name, fault);
  f = OpenFile{};
  return fault == WriteFault::none;
}

// Reads the rest of `f` as the CHAR result; NIL when nothing is left.
int read_rest(Fct0Call& c, OsFile* f) {
  TextOut t = text_begin(c);
  size_t got = 0;
  while (!t.full) {
    size_t n = os_read(f, t.p, static_cast<size_t>(t.end - t.p));
    if (n == 0) break;
    t.p += n;
    got += n;
    if (t.p == t.end) {
      char extra;
      if (os_read(f, &extra, 1) == 1) t.full = true;
    }
  }
  if (got == 0 && !t.full) return build_nil(c.out, c.limit);
  return text_end(t);
}

bool write_text(SafeFile* f, const char* s, size_t n, size_t* written) {
  *written += n;
  return safe_write(f, s, n);
}

// Numbers are written as the print command shows them: "%f ".
bool write_numbers(SafeFile* f, const word* v, int from, size_t* written) {
  for (int i = from; i < value_length(v); i++) {
    char buf[64];
    int n = snprintf(buf, sizeof buf, "%f ", static_cast<double>(getf(v, i)));
    if (n < 0 || n >= static_cast<int>(sizeof buf) || !write_text(f, buf, static_cast<size_t>(n), written))
      return false;
  }
  return true;
}

bool write_part(SafeFile* f, const word* part, int from, size_t* written) {
  if (tag(part) == T_CHAR) return write_text(f, text(part), static_cast<size_t>(text_bytes(part)), written);
  if (tag(part) == T_FLOAT) return write_numbers(f, part, from, written);
  return true;
}

}  // namespace

void fct0_close_files() {
  for (OpenFile& f : fct0_state().files) close_slot(f);
}

// `fopen("name")` reads; with a `fwrite` item it writes the file anew,
// with an `add` item it appends. The result is the slot number.
int FOPEN_a(Fct0Call& c) {
  const word* v = fct0_argument(c);
  if (!v || tag(v) != T_CHAR) return wrong_kind(c);
  int num = 1;
  while (num <= FILE_SLOTS && open_slot(num)) num++;
  if (num > FILE_SLOTS) {
    voir_mot(KW_fopen);
    err_debordement(nullptr);
    return -1;
  }
  const bool writes = c.second && c.second[2] == KW_fwrite;
  const bool adds = c.second && c.second[2] == KW_add;
  OpenFile f;
  f.name = text(v);
  if (writes || adds) {
    WriteFault fault;
    f.out = safe_open(f.name, adds, &fault);
    if (!f.out) {
      signale_ecriture(f.name, fault);
      return -1;
    }
  } else if (!(f.in = os_open(f.name.c_str()))) {
    err_lecture(f.name.c_str());
    return -1;
  }
  slots()[num] = f;
  word* r = build_zeros(c.out, c.limit, 1);
  if (!r) return -12;
  setf(r, 0, static_cast<float>(num));
  return 0;
}

// `fclose(num)` closes one file, `fclose` all of them.
int FCLOSE_a(Fct0Call& c) {
  const word* v = fct0_argument(c);
  if (!v) {
    fct0_close_files();
    return build_nil(c.out, c.limit);
  }
  int num = slot_number(v);
  OpenFile* f = open_slot(num);
  if (!f) {
    voir_int("fclose %d\n", num);
    return -1;
  }
  return close_slot(*f) ? build_nil(c.out, c.limit) : -1;
}

// `fread(num)`: the rest of an open file; `fread("name")`: a whole file.
int FREAD_a(Fct0Call& c) {
  const word* v = fct0_argument(c);
  if (v && tag(v) == T_CHAR) {
    OsFile* f = os_open(text(v));
    if (!f) {
      err_lecture(text(v));
      return -1;
    }
    int r = read_rest(c, f);
    os_close(f);
    return r;
  }
  OsFile* f = file_of(c);
  return f ? read_rest(c, f) : -1;
}

// `fwrite(num, ...)`: the texts as they are and the numbers as "%f ",
// the first number being the slot. The result is the count of bytes.
int FWRITE_a(Fct0Call& c) {
  const word* v = fct0_argument(c);
  const word* first = v && tag(v) == T_HYBRIDE && np(v) > 0 ? v + 4 : v;
  OpenFile* f = open_slot(slot_number(first));
  if (!f || !f->out) {
    err_objet(KW_fwrite, first, -1, 0, nullptr);
    return -1;
  }
  size_t written = 0;
  bool ok = write_part(f->out, first, 1, &written);
  if (tag(v) == T_HYBRIDE) {
    const word* part = first + size(first);
    for (int i = 1; ok && i < np(v); i++, part += size(part)) ok = write_part(f->out, part, 0, &written);
  }
  if (!ok) {
    // The file stays as it was; closing it will not report again.
    if (!f->reported) signale_ecriture(f->name, safe_fault(f->out));
    f->reported = true;
    return -1;
  }
  word* r = build_zeros(c.out, c.limit, 1);
  if (!r) return -12;
  setf(r, 0, static_cast<float>(written));
  return 0;
}

// `getline(num)` and `getword(num)`: tabs, newlines and blanks before
// the text are skipped; a line ends at a newline or NUL, a word also at
// a tab or blank. NIL at the end of the file with nothing read.
int fct0_getline(Fct0Call& c) {
  OsFile* f = file_of(c);
  if (!f) return -1;
  bool word_only = c.first[2] == KW_getword;
  int ch = os_getc(f);
  while (ch == 9 || ch == 10 || ch == ' ') ch = os_getc(f);
  if (ch < 0) return build_nil(c.out, c.limit);
  TextOut t = text_begin(c);
  while (ch > 0 && ch != '\n' && !(word_only && (ch == '\t' || ch == ' '))) {
    if (!text_put(t, static_cast<char>(ch))) break;
    ch = os_getc(f);
  }
  return text_end(t);
}
