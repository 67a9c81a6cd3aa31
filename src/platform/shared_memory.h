// Named shared memory that other processes map under the same name.
#pragma once
#include <cstddef>

// Opens (creating it when needed) the object `name` of `size` bytes; -1
// on failure. A name without a leading "/" gets one.
int shm_object_open(const char* name, size_t size);
// Maps an open object for reading and writing and closes its handle;
// null on failure.
void* shm_object_map(int handle, size_t size);
void shm_object_unmap(void* view, size_t size);
// Removes the name (mappings in place stay valid).
void shm_object_remove(const char* name);
