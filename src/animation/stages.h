// The stage functions that the list of stages holds from the start: the
// timetable, the per-image resets of the volumes' data and forces, the
// local functions and the display.
#pragma once

// One step of the `exec` timetable (the schedule of `exec func(...)
// time(...)`); also what `exec func` with no name runs.
int executer_fonc();
// raz_generate(volume, 0) for every volume.
int ZER_DATAS();
// The first three floats of `force` of every volume set to 0.
int efface_forces_volumes();
// `force add`, `force rota`, `force rota add` and `force vertex` set to 0
// on the fogs, lights, brushes, trajectories, volumes and views.
int ZER_FORCE();
// EXEC_LOCALE_TOUT as a stage.
int locales_cycle();
// The display of an image: identity on the model-view; the projection by
// the `pers` switch; the visible images; the lights' cut-offs; the volumes.
int modelview_identite();
int projection_image();
int images_image();
int lumieres_image();
int volumes_image();
