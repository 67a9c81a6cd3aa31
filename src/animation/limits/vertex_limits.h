// The bounds of EXEC_LIMIT on the vertices of a volume.
#pragma once
#include "kernel/objet.h"

// `limit tran poi`, `limit tran vertex`, `limit tran poi force`, `limit
// ball`, `limit near vertex vertex`, `limit dist vertex vertex` and
// `limit dist secx`, `secy`. 0, or negative after a report.
int limites_sommets(Objet* o);
