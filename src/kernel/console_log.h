// Copy of console output into the `text` property of the text object
// chosen as console log (kernel().Text_courant).
#pragma once

// Appends a VOIR_CHAR print: the format's text up to its first "%", the
// string for a "%s", then the rest of the format to the next "%".
void console_log_string(const char* format, const char* s);
// Appends a numeric print with its conversions expanded by hand; the
// property acts as a sliding window, dropping the oldest characters.
void console_log_number(const char* format, int a, int b, int count);
void console_log_floats(const char* format, const float* f, int count);  // one or two
