// Live coding: with `yes reload`, the function files the session has read
// (`read func`, "name.func" loaded by a call, the `fun=` folder) are
// watched; one written again is compiled and linked again between two
// images, or before the next console line, and the running loop takes
// the new code at its next call. A file that does not compile tells its
// mistakes and leaves the previous version running.
#pragma once
#include <string>
#include <vector>

struct FileWatch;

struct ReloadState {
  std::vector<std::string> fichiers;  // the function files read, absolute, each once
  FileWatch* veille = nullptr;        // made when `reload` is first on
  size_t surveilles = 0;              // the first files already under watch
  bool sans_veille = false;           // the system gave no watch: told once
  std::vector<std::string> changes;   // the files changed, kept from one poll to the next
};

ReloadState& rechargement();

// Remembers a function file the session has read.
void reload_note_file(const std::string& path);
// With `yes reload`, reloads the files changed since the last call; at
// the head of each image and before each console line. Nothing happens
// inside a running function: its code stays until the call returns.
void reload_poll();
// Reloads one function file: 0, or -1 when it could not be read or did
// not compile (the functions it names are then as they were).
int reload_file(const std::string& path);
// Before each console line: the files reloaded, then the hooks of
// `between_lines`.
void entre_lignes();
