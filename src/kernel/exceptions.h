// The guard where commands and compiles run: no C++ exception leaves a
// command. Want of memory and any other exception become a message and a
// failure, and the session goes on; Abandon, the interrupt's way back to
// the start of the line, passes through.
#pragma once
#include <exception>
#include <new>

#include "kernel/interrupt.h"

// The reports of the guard: message 16 for want of memory (the reserve
// is given back), the exception's own text otherwise.
void exception_memoire();
void exception_autre(const char* what);

template <class F>
int sans_exception(F&& f) {
  try {
    return f();
  } catch (const Abandon&) {
    throw;
  } catch (const std::bad_alloc&) {
    exception_memoire();
  } catch (const std::exception& e) {
    exception_autre(e.what());
  } catch (...) {
    exception_autre(nullptr);
  }
  return -1;
}
