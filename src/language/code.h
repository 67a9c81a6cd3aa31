// Compiled code: a bloc of tag -1021 holding a flat token stream. Its
// codes are one space: the kinds of variables and of symbol-table entries,
// and the items of the evaluation area, carry the code of the token that
// names them.
// A token whose first word is negative is a two-word token (tag, value);
// one whose first word is positive is a record (size, tag, fields...).
// A zero word, or a first word of 35, ends the stream.
#pragma once
#include "kernel/word.h"

enum CodeTag : word {
  C_OPER = -1001,      // operator or bracket; value: code below
  // A number is the two-word token [T_FLOAT, float bits].
  C_COMMAND = -1003,   // keyword code
  C_TYPE_FUNC = -1004, // call through a formal declared `func`
  C_END = -1009,       // end of a console text
  C_LINE = -1014,      // source line number
  C_LABEL = -1019,     // ETIQUETTE, label ordinal
  C_MACRO = -1047,     // a macro of the symbol table
  C_JUMP = -1031,      // linked goto: word offset from this token
  C_FORMEL = -1042,
  C_AD_GLB = -1051,    // also the subkind of a formal declared `address`
  C_AD_LOC = -1052,
  C_AD_STATIC = -1054,
  C_AUTO = -14,
  C_BREAK = -16,
  C_CASE = -19,
  C_DEFAULT = -27,
  C_DEMO = -28,
  C_EXTERN = -41,
  C_GLOBAL = -53,
  C_GOTO = -55,
  C_NIL = -78,
  C_PI = -82,
  C_NL = -91,
  C_STATIC = -102,
  // Items that only live on the evaluation area; a variable made a
  // reference to another takes the kind T_ADDRESS.
  T_ADDRESS = -1056,    // [-1056, variable handle]
  T_REF_SQUARE = -1016, // reference made by [...]
  T_REF_BRACE = -1017,  // reference made by {...}
};

// Tags of records. A string is a record tagged T_CHAR (1, byte length,
// bytes) and a vector one tagged T_FLOAT (count, 1, floats), the tags of
// the values they become (kernel/word.h).
enum RecordTag : word {
  // Calls: [5, tag, target, argument count, symbol ordinal]. The target
  // is the ordinal before linking, the function's handle once linked, and
  // the ordinal again for a function to be fetched from disk; the ordinal
  // is kept so that a relink can always find the name.
  R_UNDEFINED = -1032,
  R_CODE_FUNC = -1037,
  R_FUNC_DISK = -1038,
  R_ORIGIN = -2,        // name bytes, skipped at run time
  R_IF = 59,            // placeholder; linked: -59
  R_IF_LINKED = -59,
  R_FOR = 45,           // placeholder
  R_FOR_COUNTED = -1025,
  R_FOR_COUNTED_LINKED = -1028,
  R_FOR_C = -1024,
  R_FOR_C_LINKED = -1027,
  R_SWITCH = 107,
  R_SWITCH_LINKED = -107,
  R_WHILE = 117,
};

// The words of the control records. A linked offset counts from the
// record's first word; the groups of a record's heads follow it.
//
// A test: `if` and `while` (IF_WORDS) and, once linked, `for(init;cond;inc)`
// (FOR_WORDS). Before linking only the size and tag are set.
enum TestWord {
  TEST_CONDITION = 2,  // the condition's group
  TEST_TRUE = 3,       // where a true condition goes: the body
  TEST_FALSE = 4,      // where a false one goes: the else, or past the body
};
constexpr int IF_WORDS = 5;
// The counted `for(i=a,b[,c])`: FOR_WORDS. Built with FOR_STEP 1 when it
// has a step group and FOR_STEP_VALUE 1.0 when not; linked with the offsets
// of its groups and its exits; its first turn writes the variable and the
// values for the listing.
enum ForWord {
  FOR_INIT = 2,        // the group `i=a`
  FOR_VARIABLE = 3,    // the variable's handle
  FOR_END = 4,         // the group `b`
  FOR_END_VALUE = 5,   // b, float bits
  FOR_STEP = 6,        // the group `c`, or 0
  FOR_STEP_VALUE = 7,  // c, float bits
  FOR_BODY = 8,        // the body, for another turn
  FOR_AFTER = 9,       // past the body, at the end
};
constexpr int FOR_WORDS = 12;

// Operator codes (value of a C_OPER token): characters stand for
// themselves; these are the others.
enum OperCode : word {
  O_EQ = 1001, O_NE = 1002, O_LE = 1003, O_GE = 1004, O_AND = 1005, O_OR = 1006,
  O_TILDE = 1007, O_XOR_SET = 1008, O_SHL = 1009, O_SHR = 1010, O_SUB_SET = 1012,
  O_MUL_SET = 1013, O_DIV_SET = 1014, O_MOD_SET = 1015, O_SHL_SET = 1016,
  O_SHR_SET = 1017, O_AND_SET = 1018, O_OR_SET = 1019, O_LIST_SET = 1021,
  O_ADD_SET = 10011,
  O_INC = -1049, O_DEC = -1050,
  O_NOP = -1020, O_OPEN = -1022, O_CLOSE = -1023, O_FOR_START = -1026,
  O_ELSE = 34,
  O_ADDRESS = 64,
};

// Words taken by the token at `t`.
inline int token_len(const word* t) { return t[0] < 0 ? 2 : t[0]; }
inline bool is_oper(const word* t, word code) { return t[0] == C_OPER && t[1] == code; }
inline bool is_record(const word* t, word tag) { return t[0] > 0 && t[1] == tag; }
// True for the stream's end: a zero word or a first word of 35.
inline bool stream_end(const word* t) { return t[0] == 0 || t[0] == 35; }

// Header of a compiled bloc.
constexpr int CODE_HEAD = 4;

constexpr int CALL_WORDS = 5;
