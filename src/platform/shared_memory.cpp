#include "platform/shared_memory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

namespace {

std::string posix_name(const char* name) { return name[0] == '/' ? std::string(name) : "/" + std::string(name); }

}  // namespace

int shm_object_open(const char* name, size_t size) {
  if (!name || !*name) return -1;
  const int fd = shm_open(posix_name(name).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (fd < 0) return -1;
  struct stat st {};
  // A new object is empty: it takes its size here, zeroed. One made by a
  // peer keeps its content; one too small for the view grows.
  if (fstat(fd, &st) != 0 || (static_cast<size_t>(st.st_size) < size && ftruncate(fd, static_cast<off_t>(size)) != 0)) {
    close(fd);
    return -1;
  }
  return fd;
}

void* shm_object_map(int handle, size_t size) {
  void* v = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, handle, 0);
  close(handle);
  return v == MAP_FAILED ? nullptr : v;
}

void shm_object_unmap(void* view, size_t size) {
  if (view) munmap(view, size);
}

void shm_object_remove(const char* name) {
  if (name && *name) shm_unlink(posix_name(name).c_str());
}
