#include "platform/file_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

struct FileWatch {
  int fd = -1;
  std::map<int, std::string> dossiers;  // watch descriptor -> folder
  std::set<std::string> fichiers;       // the files watched, absolute
};

FileWatch* watch_open() {
  const int fd = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (fd < 0) return nullptr;
  FileWatch* w = new FileWatch;
  w->fd = fd;
  return w;
}

void watch_close(FileWatch* w) {
  if (!w) return;
  close(w->fd);
  delete w;
}

std::string watch_path(const std::string& path) {
  std::error_code ec;
  std::filesystem::path p = std::filesystem::absolute(path, ec);
  if (ec) return path;
  return p.lexically_normal().string();
}

bool watch_add(FileWatch* w, const std::string& path) {
  const std::string f = watch_path(path);
  const std::string dossier = std::filesystem::path(f).parent_path().string();
  const int wd = inotify_add_watch(w->fd, dossier.c_str(), IN_CLOSE_WRITE | IN_MOVED_TO);
  if (wd < 0) return false;
  w->dossiers[wd] = dossier;
  w->fichiers.insert(f);
  return true;
}

void watch_changed(FileWatch* w, std::vector<std::string>& out) {
  out.clear();
  alignas(inotify_event) char tampon[4096];
  for (;;) {
    const ssize_t n = read(w->fd, tampon, sizeof tampon);
    if (n <= 0) break;
    for (ssize_t i = 0; i < n;) {
      const auto* ev = reinterpret_cast<const inotify_event*>(tampon + i);
      i += static_cast<ssize_t>(sizeof(inotify_event) + ev->len);
      if (ev->len == 0) continue;
      const auto d = w->dossiers.find(ev->wd);
      if (d == w->dossiers.end()) continue;
      const std::string f = d->second + "/" + ev->name;
      if (w->fichiers.count(f) && std::find(out.begin(), out.end(), f) == out.end()) out.push_back(f);
    }
  }
}
