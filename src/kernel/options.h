// The two option parsers: interpreter keys (`option_a`) and graphic keys
// (`option_b`). Each parses one `key` or `key=value` word and returns the
// text position after it.
#pragma once
#include <string>
#include <vector>

const char* option_a(const char* text, int* buffer_size, int* write_thread_id, std::string* key_buffer);
const char* option_b(const char* text, int* bottom_lift);

// Runs a parser over every word of an environment text.
void options_a_text(const char* text);
void options_b_text(const char* text, int* bottom_lift);

// Blank-separated words of a text.
std::vector<std::string> split_words(const std::string& text);
