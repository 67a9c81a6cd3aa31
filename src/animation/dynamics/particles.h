// Particles: volumes of subkind `particle` whose vertices are born again
// on a clock.
#pragma once
#include "kernel/objet.h"

// `time(t1,t2,t3)` of each particle volume: t3 counts the images and on
// passing t2 returns to 0 and one particle is born; `time vertex`, three
// values a vertex, does the same for each vertex whose second value is
// above 0. Negative after a report.
int inc_particule();

// The birth of a particle. The volume's `particle` (x, y, z, vx, vy, vz)
// is the emitter: the vertex is put at its point and given its speed,
// its force cleared. `vertex` from 1 names the vertex; 0 takes the next
// one in turn (a counter in the volume's last work word), so that the
// vertices are reborn oldest first.
int SET_PARTICLE_1(Objet* o, int vertex);
