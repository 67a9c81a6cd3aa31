// The help of the words: one entry a word, {code, usage, example}, kept in
// groups that `help` alone lists under their headings. The interpreter's
// words are the first group; each subsystem above adds its own group at
// install, so the texts live beside the commands they explain.
#pragma once
#include <cstddef>
#include <span>
#include <string>
#include <vector>

struct HelpEntry {
  int code;             // keyword code
  const char* usage;    // the forms the command takes, and what they do
  const char* example;  // one line that runs as it stands
};

// The entry of a word that has no command of its own and serves only as
// the key of properties: its usage and example are the same for all such
// words, made from its name.
constexpr HelpEntry key_word(int code) { return {code, nullptr, nullptr}; }

struct HelpGroup {
  const char* heading;
  std::span<const HelpEntry> entries;
};

struct HelpState {
  std::vector<HelpGroup> groups;  // in the order `help` lists them
};

// The interpreter's words (language/help_words.cpp): the first group.
extern const HelpGroup INTERPRETER_HELP;

HelpState& help_state();

// Adds a group; a heading already there is not added twice.
void help_register(const char* heading, std::span<const HelpEntry> entries);
// The entry of a keyword code, or null.
const HelpEntry* help_find(int code);
// The usage and the example of an entry, those of a key word made from
// its name.
std::string help_usage(const HelpEntry& e);
std::string help_example(const HelpEntry& e);
// The name line, descriptor and values of a keyword, then its usage and
// example.
void help_print(int code);
// Every group under its heading, names in columns.
void help_list();
// The names of both vocabularies nearest to `name` by edit distance, at
// most `count`, nearest first.
std::vector<std::string> help_nearest(const char* name, size_t count);
// The report of a word that is no keyword: the word, "UNKNOWN", and the
// nearest names.
void help_unknown(const char* name);
