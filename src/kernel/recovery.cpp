// The end of a run forced by SIGTERM or SIGHUP: the unsaved work of every
// kind goes to a recovery file in the working folder (the home folder if
// that cannot be written), and the next start names what it finds.
#include <string>

#include "kernel/bye.h"
#include "kernel/report.h"
#include "platform/process.h"

namespace {

// The first recovery name that no earlier run has used in `folder`.
std::string free_name(const std::string& folder) {
  for (int n = 1;; n++) {
    std::string name = RECOVERY_NAME;
    if (n > 1) name += "-" + std::to_string(n);
    bool used = false;
    for (const std::string& f : files_starting_with(folder, name))
      if (f == name || f[name.size()] == '.') used = true;
    if (!used) return folder + "/" + name;
  }
}

}  // namespace

void end_on_signal(int signal) {
  const std::string sig = signal_name(signal);
  // One name for all the files of this run, in each folder tried.
  const std::string here = free_name(working_directory());
  const std::string home = home_directory().empty() ? std::string() : free_name(home_directory());
  bool any = false;
  for (const UnsavedWork& w : bye_state().work) {
    if (!w.pending || !w.save || !w.pending()) continue;
    std::string path = here + w.extension;
    if (!w.save(path) && (home.empty() || !w.save(path = home + w.extension))) continue;
    VOIR_CHAR("%s: unsaved work written to ", sig.c_str());
    VOIR_CHAR("%s\n", path.c_str());
    any = true;
  }
  if (!any) VOIR_CHAR("%s: nothing unsaved\n", sig.c_str());
  flush_out();
  process_exit(128 + signal);
}

void announce_recovery() {
  const std::string folder = working_directory();
  for (const std::string& f : files_starting_with(folder, RECOVERY_NAME)) {
    VOIR_CHAR("recovery file of an ended run: %s\n", (folder + "/" + f).c_str());
  }
}
