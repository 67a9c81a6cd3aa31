// The walker of the compiler over prepared text.
#pragma once
#include <string>
#include <vector>

#include "language/compile_internal.h"

struct Walker {
  static constexpr size_t NONE = static_cast<size_t>(-1);

  Compilation& c;
  const char* p;            // cursor in the prepared text
  Tokens& out;
  size_t prev = NONE;       // index of the previous token
  int brace = 0, paren = 0, square = 0;
  std::vector<int> for_heads;   // paren depths of open `for` heads
  bool header_done = false;
  bool pending_address = false; // "@" after blanks
  bool last_call_takes_name = false;

  Walker(Compilation& comp, const char* text, Tokens& tokens);
  int run();
  int item();
  int header();
  int formal_declarations();

  void emit(word a, word b);
  void emit_record(const Tokens& r);
  const word* previous() const;
  bool operand_expected() const;
  int fail(int message);

  int number();
  int string();
  // A text constant: its record in the token stream.
  void emit_text(const std::string& body, word tag_word);
  int quoted();
  int line_mark();
  int origin_mark();
  int case_marker();
  int oper();
  bool comma_misplaced();
  int bracket_error();
  int open_bracket(char ch);
  int close_bracket(char ch);
  int semicolon();
  bool label(const char* w);
  int name();
  int call(const char* w);
  int variable(const char* w);
  int var_token(word kind, Objet* v);
  Objet* find_global(const char* w);

  // Commands and their special forms.
  int command(int code);
  int declaration(int code);
  int declare_extern(const char* w);
  int declare_static(const char* w, Objet* table, int kind);
  int keywords_to_end(int code);
  // Reads a name of a declaration list; 0 at the end of the statement.
  int declared_name(char* w);
  void skip_statement();
  const char* initial_text_end(const char* s);
};
