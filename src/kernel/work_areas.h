// The fixed working areas allocated at start-up.
#pragma once

// Allocates the external table, the evaluation area and the command stack;
// on failure prints the labelled size and returns -1 (fatal at start-up).
int allocate_work_areas();
