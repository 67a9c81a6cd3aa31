// What the command `traj` shares between its creation and its field form.
#pragma once
#include "kernel/objet.h"
#include "kernel/word.h"

// The words that name objects to attach a trajectory to.
bool mot_attache(int code);
// Adds the trajectory to the `traj` list (`traj vertex`, `traj fac` with
// those words) of every object the command names. -1 after a report.
int attache(word* s, Objet* t);
// The lights and views the command names, attached the same way.
int TRAJ_LIGHT_VIEW(word* s, Objet* t);
// The properties given by the command: `debug`, `precision`, `format`,
// `time`, `add`, `number`, `STOP`, `vertex`, and the name (TRAJ_NAME).
int proprietes_traj(word* s, Objet* t);
// `limit axis(x0,y0,z0,x1,y1,z1)`: the bounds of the `axis` kind.
int limite_axe(word* s, Objet* t);
// Prints the table, row after row.
void montre_table(Objet* t);
