#include "platform/safe_write.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <vector>

struct SafeFile {
  std::string target;  // where the file goes, links followed
  std::string temp;    // the temporary file; empty when writing in place
  int fd = -1;
  WriteFault fault = WriteFault::none;
};

namespace {

// Writes begun and not yet finished, committed if the process ends first.
std::vector<SafeFile*>& open_writes() {
  static std::vector<SafeFile*> v;
  return v;
}

WriteFault fault_of(int err) {
  return err == ENOSPC || err == EDQUOT || err == EFBIG ? WriteFault::space : WriteFault::io;
}

// The file a path finally names: symbolic links are followed, so that the
// temporary file lies beside the real file and the link is kept.
std::string followed(const std::string& path) {
  std::string p = path;
  for (int hops = 0; hops < 40; hops++) {
    char buf[PATH_MAX];
    ssize_t n = readlink(p.c_str(), buf, sizeof buf - 1);
    if (n < 0) break;
    std::string link(buf, static_cast<size_t>(n));
    if (link.empty() || link[0] == '/') {
      p = link;
    } else {
      size_t slash = p.rfind('/');
      p = slash == std::string::npos ? link : p.substr(0, slash + 1) + link;
    }
  }
  return p;
}

std::string folder_of(const std::string& path) {
  size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string base_of(const std::string& path) {
  size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

mode_t creation_mode() {
  mode_t mask = umask(0);
  umask(mask);
  return 0666 & ~mask;
}

bool write_all(int fd, const char* p, size_t n, WriteFault* fault) {
  while (n > 0) {
    ssize_t w = write(fd, p, n);
    if (w < 0 && errno == EINTR) continue;
    if (w <= 0) {
      *fault = w < 0 ? fault_of(errno) : WriteFault::io;
      return false;
    }
    p += w;
    n -= static_cast<size_t>(w);
  }
  return true;
}

// Copies the target's bytes into the temporary file.
bool copy_existing(const std::string& from, int to, WriteFault* fault) {
  int in = open(from.c_str(), O_RDONLY | O_CLOEXEC);
  if (in < 0 && errno == ENOENT) return true;
  if (in < 0) {
    *fault = WriteFault::create;
    return false;
  }
  char buf[65536];
  bool ok = true;
  for (;;) {
    ssize_t r = read(in, buf, sizeof buf);
    if (r < 0 && errno == EINTR) continue;
    if (r < 0) {
      *fault = WriteFault::io;
      ok = false;
    }
    if (r <= 0 || !write_all(to, buf, static_cast<size_t>(r), fault)) break;
  }
  close(in);
  return ok && *fault == WriteFault::none;
}

void forget(SafeFile* f) {
  auto& v = open_writes();
  v.erase(std::remove(v.begin(), v.end(), f), v.end());
}

}  // namespace

SafeFile* safe_open(const std::string& path, bool keep, WriteFault* fault) {
  *fault = WriteFault::none;
  if (path.empty()) {
    *fault = WriteFault::create;
    return nullptr;
  }
  auto* f = new SafeFile;
  f->target = followed(path);
  struct stat st {};
  const bool exists = stat(f->target.c_str(), &st) == 0;
  if (exists && S_ISDIR(st.st_mode)) {
    delete f;
    *fault = WriteFault::create;
    return nullptr;
  }
  if (exists && !S_ISREG(st.st_mode)) {
    // A device or a fifo: nothing to replace, written in place. A fifo
    // without a reader refuses at once rather than blocking.
    f->fd = open(f->target.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC | (keep ? O_APPEND : 0));
    if (f->fd >= 0) fcntl(f->fd, F_SETFL, fcntl(f->fd, F_GETFL) & ~O_NONBLOCK);
  } else {
    std::string pattern = folder_of(f->target) + "/." + base_of(f->target) + ".XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    f->fd = mkostemp(name.data(), O_CLOEXEC);
    if (f->fd >= 0) {
      f->temp = name.data();
      fchmod(f->fd, exists ? (st.st_mode & 07777) : creation_mode());
      if (keep && exists && !copy_existing(f->target, f->fd, &f->fault)) {
        *fault = f->fault;
        safe_abandon(f);
        return nullptr;
      }
    }
  }
  if (f->fd < 0) {
    *fault = WriteFault::create;
    delete f;
    return nullptr;
  }
  open_writes().push_back(f);
  return f;
}

bool safe_write(SafeFile* f, const void* data, size_t n) {
  if (f->fault != WriteFault::none) return false;
  return write_all(f->fd, static_cast<const char*>(data), n, &f->fault);
}

bool safe_write_at(SafeFile* f, long long offset, const void* data, size_t n) {
  if (f->fault != WriteFault::none) return false;
  if (offset < 0 || lseek(f->fd, static_cast<off_t>(offset), SEEK_SET) < 0) {
    f->fault = WriteFault::io;
    return false;
  }
  return safe_write(f, data, n);
}

WriteFault safe_fault(const SafeFile* f) { return f->fault; }

WriteFault safe_commit(SafeFile* f) {
  forget(f);
  WriteFault fault = f->fault;
  // A full disk often shows only when the data reaches it.
  if (fault == WriteFault::none && !f->temp.empty() && fdatasync(f->fd) != 0) fault = fault_of(errno);
  if (close(f->fd) != 0 && fault == WriteFault::none) fault = fault_of(errno);
  if (!f->temp.empty()) {
    if (fault == WriteFault::none && rename(f->temp.c_str(), f->target.c_str()) != 0) fault = WriteFault::create;
    if (fault != WriteFault::none) {
      unlink(f->temp.c_str());
    } else {
      // The rename itself reaches the disk with the folder.
      int dir = open(folder_of(f->target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
      if (dir >= 0) {
        fsync(dir);
        close(dir);
      }
    }
  }
  delete f;
  return fault;
}

void safe_abandon(SafeFile* f) {
  forget(f);
  close(f->fd);
  if (!f->temp.empty()) unlink(f->temp.c_str());
  delete f;
}

void safe_commit_all() {
  while (!open_writes().empty()) safe_commit(open_writes().back());
}

WriteFault safe_write_file(const std::string& path, const void* data, size_t n) {
  WriteFault fault;
  SafeFile* f = safe_open(path, false, &fault);
  if (!f) return fault;
  safe_write(f, data, n);
  return safe_commit(f);
}

WriteFault write_whole_file(const char* path, const char* temp, const void* data, size_t n) {
  const int fd = open(temp, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (fd < 0) return WriteFault::create;
  WriteFault fault = WriteFault::none;
  const bool written = write_all(fd, static_cast<const char*>(data), n, &fault);
  if (close(fd) != 0 && written) fault = fault_of(errno);
  if (fault == WriteFault::none && rename(temp, path) != 0) fault = WriteFault::create;
  if (fault != WriteFault::none) unlink(temp);
  return fault;
}
