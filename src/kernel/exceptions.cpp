#include "kernel/exceptions.h"

#include "kernel/report.h"
#include "kernel/resources.h"

void exception_memoire() {
  memoire_manque();
  voir_message(0, MES_MALLOC_ERROR);
}

void exception_autre(const char* what) {
  VOIR_CHAR("%s: ", what && *what ? what : "exception");
  voir_message(0, MES_UNABLE_TO_PROCESS);
}
