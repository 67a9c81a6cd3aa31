// Watching files for changes through inotify. A file is watched through
// its folder, so that a file an editor replaces (a new file renamed over
// the old) is still seen. Nothing here waits.
#pragma once
#include <string>
#include <vector>

struct FileWatch;

// Null when the system gives no watch.
FileWatch* watch_open();
void watch_close(FileWatch* w);
// Watches the file at `path`; false when its folder cannot be watched.
bool watch_add(FileWatch* w, const std::string& path);
// The watched files written and closed, or renamed onto, since the last
// call, each once, in `out` (emptied first).
void watch_changed(FileWatch* w, std::vector<std::string>& out);
// The absolute form of a path, the one watch_changed gives back.
std::string watch_path(const std::string& path);
