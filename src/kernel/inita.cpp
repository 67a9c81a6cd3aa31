// Interpreter side of start-up: options, initialisation file, environment
// files, working areas.
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "kernel/bloc.h"
#include "kernel/entier.h"
#include "kernel/file_out.h"
#include "kernel/keywords.h"
#include "kernel/options.h"
#include "kernel/report.h"
#include "kernel/startup.h"
#include "kernel/translate.h"
#include "kernel/vocab.h"
#include "kernel/work_areas.h"
#include "platform/process.h"

namespace {

// The env text of vocabulary 0 when its file is missing is that of the
// minimal environment (ENV_TEXT_0). For further vocabularies the fallback
// overwrites rather than appends,
// so only its last line survives.
const char* const ENV_FALLBACK_N = "PER=100\n";

std::string with_slash(std::string s) {
  if (!s.empty() && s.back() != '/' && s.back() != '\\') s += '/';
  return s;
}

// Environment files are read whole, tabs copied as four blanks.
bool read_env_file(const std::string& path, std::string& out) {
  std::string raw;
  if (path.size() >= 256 || !file_read_all(path, raw)) return false;
  out.clear();
  for (char c : raw) {
    if (c == '\t') out += "    ";
    else out += c;
  }
  return true;
}

void print_banner(int argc, char** argv) {
  voir_texte(ORVELA_BANNER);
  voir_texte("Options = ");
  for (int i = 1; i < argc; i++) VOIR_CHAR(i > 1 ? " %s" : "%s", argv[i]);
  voir_texte("\n");
}

void find_working_directory() {
  KernelState& k = kernel();
  k.cwd = with_slash(working_directory());
  VOIR_CHAR("%s\n", k.cwd.c_str());
}

// The three file names of one vocabulary line, joined to the folder.
std::vector<std::string> split_names(const std::string& line, const std::string& folder) {
  std::vector<std::string> names;
  size_t start = 0;
  for (int i = 0; i < 3; i++) {
    size_t comma = i < 2 ? line.find(',', start) : std::string::npos;
    std::string name = line.substr(start, comma == std::string::npos ? std::string::npos : comma - start);
    while (!name.empty() && (name.back() == ' ' || name.back() == '\r')) name.pop_back();
    while (!name.empty() && name.front() == ' ') name.erase(0, 1);
    names.push_back(folder + name);
    if (comma == std::string::npos) start = line.size();
    else start = comma + 1;
  }
  return names;
}

void vocabulary_heading(int i) {
  if (i == 0) voir_texte("INTERPRETER\n");
  else if (i == 1) voir_texte("ORVELA\n");
  else voir_int("APPLICATION %d\n", i - 1);
}

// Loads vocabulary `i` from the files named on its line of the
// initialisation file.
void load_vocabulary(int i, const std::string& line) {
  KernelState& k = kernel();
  std::vector<std::string> names = split_names(line, k.env);
  vocabulary_heading(i);
  std::string env, kom, mes;
  VOIR_CHAR("env %s\n", names[0].c_str());
  if (!read_env_file(names[0], env)) env = i == 0 ? ENV_TEXT_0 : ENV_FALLBACK_N;
  VOIR_CHAR("kom %s\n", names[1].c_str());
  if (!read_env_file(names[1], kom)) {
    VOIR_CHAR("%s: read error\a\n", names[1].c_str());
    enter_exit(nullptr);
  }
  VOIR_CHAR("mes %s\n", names[2].c_str());
  if (!read_env_file(names[2], mes)) {
    VOIR_CHAR("%s: read error\a\n", names[2].c_str());
    enter_exit(nullptr);
  }
  enlever_commentaires(env.data(), 1);
  env.resize(strlen(env.c_str()));
  enlever_commentaires(kom.data(), 0);
  kom.resize(strlen(kom.c_str()));
  k.env_text[i] = env;
  if (lire_kom(i, kom.c_str()) < 0 || lire_mes(i, mes.c_str()) < 0) {
    VOIR_CHAR("%s: bad\a\n", names[1].c_str());
    enter_exit(nullptr);
  }
  vocab().nb_voc = i + 1;
}

// Reads the initialisation file; false when neither it nor its copy in the
// env folder can be opened.
bool load_init_file(const std::string& name) {
  KernelState& k = kernel();
  std::string text;
  if (!file_read_all(name, text) && !file_read_all(k.env + name, text)) return false;
  text.push_back('\0');
  enlever_commentaires(text.data(), 1);
  text.resize(strlen(text.c_str()));
  VOIR_CHAR("ini:\n%s\n", text.c_str());
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < text.size()) {
    size_t nl = text.find('\n', start);
    std::string line = text.substr(start, nl == std::string::npos ? std::string::npos : nl - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty()) lines.push_back(line);
    if (nl == std::string::npos) break;
    start = nl + 1;
  }
  if (lines.size() < 2) {
    VOIR_CHAR("%s: incomplete\a\n", name.c_str());
    enter_exit(nullptr);
  }
  k.env = lines[0];
  int nb = static_cast<int>(lines.size()) - 1;
  if (nb > NB_VOC_MAX) nb = NB_VOC_MAX;
  voir_int("%d environments\n", nb);
  k.env_text.assign(nb, "");
  for (int i = 0; i < nb; i++) load_vocabulary(i, lines[i + 1]);
  void* probe = malloc(k.Dim_buf > 0 ? static_cast<size_t>(k.Dim_buf) : 0);
  if (!probe) {
    voir_int("DIM2 = %d: ", k.Dim_buf);
    enter_exit(nullptr);
  }
  free(probe);
  return true;
}

void choose_environment(const char* default_ini) {
  KernelState& k = kernel();
  std::string name;
  if (!k.ini.empty()) {
    VOIR_CHAR("init = %s\n", k.ini.c_str());
    name = k.ini;
    while (name.size() > 1 && name.back() == '/') name.pop_back();
  } else {
    VOIR_CHAR("default init = %s\n", default_ini);
    name = default_ini;
  }
  if (load_init_file(name)) return;
  env_minimal();
  k.env_text = {ENV_TEXT_0, ENV_TEXT_1};
}

// Every folder ends in "/"; an empty one is the working directory.
std::string folder(const std::string& f) { return f.empty() ? std::string("./") : with_slash(f); }

void check_machine() {
  KernelState& k = kernel();
  if (k.mac == "SGI") {
    k.machine = 0;
    voir_texte("Machine: SGI\n");
  } else if (k.mac == "PC") {
    k.machine = 1;
    voir_texte("Machine: PC\n");
  }
  if (k.machine < 0) {
    VOIR_CHAR("%s: unknow machine (SGI PC)", k.mac.c_str());
    enter_exit(nullptr);
  }
}

void print_escape() {
  int esc = kernel().esc;
  voir_texte("Caractere d'escape: ");
  if (esc == 27) voir_texte("escape");
  else if (esc == 96) voir_texte("` (accent grave)");
  else voir_car(esc);
  voir_texte("\n");
}

void print_sizes() {
  KernelState& k = kernel();
  voir_int("buffer de lecture       %d\n", k.Dim_buf);
  voir_int("evaluations             %d\n", k.Dim_ev);
  voir_int("edition                 %d\n", k.Dim_com);
  voir_int("empilements             %d\n", k.Dim_emp);
}

void build_sysinfo(int argc, char** argv) {
  KernelState& k = kernel();
  k.sysinfo = "Executable: ";
  for (int i = 0; i < argc; i++) k.sysinfo += argv[i];
  k.sysinfo += "\n";
}

// Restores every keyword's switch and current values from their initial
// copies, and reads the printing code's page size from `edit`.
void restore_keywords() {
  VocabState& v = vocab();
  for (int code = 0; code < NB_CODES; code++) {
    v.sem[code] = v.sem_ini[code];
    if (v.current[code] && v.defaults[code])
      for (int i = 0; i < v.dim[code]; i++) v.current[code][i] = v.defaults[code][i];
  }
  KernelState& k = kernel();
  if (v.current[KW_edit] && v.dim[KW_edit] >= 2) {
    k.line_width = entier(v.current[KW_edit][0]);
    k.page_height = entier(v.current[KW_edit][1]);
  }
  k.deb = 0;
  k.trace_err = 0;
  k.err = 0;
}

// Writes the thread identifier for an outside process; false on failure.
bool write_thread_id() {
  unsigned long id = thread_id();
  voir_int("GetCurrentThreadId = %x\n", static_cast<int>(id));
  char hex[32];
  snprintf(hex, sizeof hex, "%lx", id);
  return ecrit_fichier("threadID", std::string_view(hex));
}

}  // namespace

int inita(int argc, char** argv, const char* default_ini) {
  KernelState& k = kernel();
  if (argc == 2 && strcmp(argv[1], "help") == 0) print_help_a();
  k.timer_ticks = 60;
  print_banner(argc, argv);
  find_working_directory();
  for (int i = 1; i < argc; i++) option_a(argv[i], &k.Dim_buf, &k.write_thread_id, &k.tim);
  choose_environment(default_ini);
  k.etat_console = 1;
  k.htm = "code_htm";
  options_a_text(k.env_text.empty() ? "" : k.env_text[0].c_str());
  for (int i = 1; i < argc; i++) option_a(argv[i], &k.Dim_buf, &k.write_thread_id, &k.tim);
  k.env = with_slash(k.env);
  k.exe = with_slash(k.exe);
  k.son = with_slash(k.son);
  k.ima = with_slash(k.ima);
  k.fun = with_slash(k.fun);
  if (k.htm.empty()) voir_texte("code_htm: file not found, no code html set\a\n");
  else load_htm_table(k.htm.c_str());
  if (k.lan_state == 1) k.lan_words = split_words(k.lan);
  check_machine();
  k.env = folder(k.env);
  k.ima = folder(k.ima);
  k.exe = folder(k.exe);
  VOIR_CHAR("Environnement dans %s\n", k.env.c_str());
  VOIR_CHAR("Utilitaires dans %s\n", k.ima.c_str());
  VOIR_CHAR("Executables dans %s\n", k.exe.c_str());
  VOIR_CHAR("Sons dans %s\n", k.son.c_str());
  if (allocate_work_areas() < 0) enter_exit(nullptr);
  print_escape();
  build_sysinfo(argc, argv);
  initb(argc, argv);
  restore_keywords();
  print_sizes();
  if (k.write_thread_id && !write_thread_id()) return 0;
  // With a "Voc_xxx" name there is no translation to load.
  if (k.voc1 != "Voc_xxx" && k.voc2 != "Voc_xxx")
    set_GENERATE_MESSAGE(k.voc1.c_str(), k.voc2.c_str(), TRANSLATE_FROM_FILE);
  else
    Yes(KW_generate) = -1;
  return 0;
}
