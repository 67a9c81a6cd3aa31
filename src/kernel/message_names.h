// The numbered messages the code shows, named by their meaning, with the
// start of their text in the shipped tables (env/mesa.h for the
// interpreter's vocabulary 0, env/mesb.h for the graphic vocabulary 1;
// a message's number is its position in its table).
// One list makes the names and the test that holds them to the tables.
#pragma once

// X(name, number, start of the text)
#define ORVELA_MESSAGES_0(X) \
  X(MES_PROMPT, 0, "?") \
  X(MES_RULE, 1, "------------------------") \
  X(MES_OVERFLOW, 2, "OVERFLOW") \
  X(MES_PARENTHESIS_ERROR, 3, "PATENTHESIS ERROR ()") \
  X(MES_LINE, 4, "line") \
  X(MES_SEE_YOU_SOON, 5, "SEE YOU SOON!...") \
  X(MES_ILLEGAL_ASSIGNMENT, 6, "ILLEGAL ASSIGNMENT") \
  X(MES_ABANDONMENT, 8, "ABANDONMENT") \
  X(MES_MISSING, 9, "MISSING") \
  X(MES_FATAL_ERROR, 10, "FATAL ERROR") \
  X(MES_WARNING, 11, "WARNING") \
  X(MES_OVERFLOW_DIM_EV, 12, "OVERFLOW, increase Dim_ev") \
  X(MES_INCOHERENT, 14, "INCOHERENT") \
  X(MES_TRUNCATED_DATA, 15, "TRONCADET DATAS") \
  X(MES_MALLOC_ERROR, 16, "MALLOC ERROR") \
  X(MES_ARC_USAGE, 17, "arc r,a,da,n") \
  X(MES_REALLOCATION, 18, "reallocation") \
  X(MES_EMPTY, 22, "EMPTY") \
  X(MES_BYTES, 25, "octets") \
  X(MES_UNABLE_TO_PROCESS, 27, "ENABLE TO PROCESS") \
  X(MES_NOT_FOUND, 28, "NOT FOUND") \
  X(MES_COMPILE_OFF, 30, "COMPILE OFF") \
  X(MES_OPERATOR_ERROR, 32, "OPERATOR ERROR") \
  X(MES_FOR_C_USAGE, 33, "for(ini;cond;inc) { ... }") \
  X(MES_BLOCK_ERROR, 34, "BLOCK ERROR {}") \
  X(MES_NOT_INITIALIZED_VARIABLE, 35, "NOT INITIALIZED VARIABLE") \
  X(MES_READ_ERROR, 36, "READ ERROR") \
  X(MES_WRITE_ERROR, 37, "WRITE ERROR") \
  X(MES_EXISTS_WRITE, 38, "EXISTS, WRITE (0,1) ?") \
  X(MES_NON_DEFINED_FUNCTION, 41, "NON DEFINED FUNCTION") \
  X(MES_DIRECTIVE_ERROR, 43, "DIRECTIVE ERROR") \
  X(MES_FUNCTION_LIST_USAGE, 44, "FUNCTION(liste)") \
  X(MES_IF_USAGE, 45, "if(cond) {bloc} or if(co") \
  X(MES_SQUARE_ROOT_NEGATIVE, 49, "SQUARE ROOT < 0") \
  X(MES_LINK_OFF, 50, "LINK OFF") \
  X(MES_HOOK_ERROR, 51, "HOOK ERROR []") \
  X(MES_TIME_OUT, 54, "time out") \
  X(MES_NO_LABEL_FOUND, 55, "NO LABEL FOUND") \
  X(MES_DIVISION_BY_ZERO, 56, "DIVISION BY ZERO") \
  X(MES_ILLEGAL_BREAK, 57, "ILLEGAL BREAK") \
  X(MES_SWITCH_USAGE, 58, "switch(expression) { cas") \
  X(MES_CASE_USAGE, 59, "case constante: ou case(") \
  X(MES_ILLEGAL_NAME, 60, "ILLEGAL NAME") \
  X(MES_ILLEGAL_INDEX, 61, "ILLEGAL INDEX") \
  X(MES_ERROR_COMMENT, 64, "ERROR COMMENT") \
  X(MES_UNKNOWN, 65, "UNKNOWN") \
  X(MES_ILLEGAL, 66, "ILLEGAL") \
  X(MES_DISK_FULL, 67, "DISK FULL") \
  X(MES_UNKNOWN_DIRECTIVE, 68, "UNKNOWN DIRECTIVE") \
  X(MES_LOG_NEGATIVE, 69, "log < 0") \
  X(MES_CONTINUE_QUESTION, 71, "CONTINUE (no:0, yes:1, command:2) ?") \
  X(MES_CONTINUE, 72, "CONTINUE") \
  X(MES_INFINITE_RECURSION, 73, "INFINITE RECURSION") \
  X(MES_BRACKET_ERROR, 74, "BRACKET ERROR {}") \
  X(MES_SYNTAX_ERROR, 75, "SYNTAX ERROR") \
  X(MES_DEBUG_PROMPT, 79, "DEBUG>") \
  X(MES_ERROR, 81, "ERROR") \
  X(MES_INCOMPLETE_STRING, 83, "INCOMPLETE STRING") \
  X(MES_DUP_FUNC_USAGE, 85, "dup func(\"name\")") \
  X(MES_IS_A_COMMAND, 89, "IS A COMMAND") \
  X(MES_IMPOSSIBLE, 91, "IMPOSSIBLE") \
  X(MES_FORMAT_USAGE, 92, "format(\"<descriptif>stri") \
  X(MES_STOP_USAGE, 93, "STOP \"name\" or STOP \"nam") \
  X(MES_CONDITION_ERROR, 94, "ERROR OF CONDITION EVALU") \
  X(MES_FOR_USAGE, 95, "for(i=depart,arrivee,pas") \
  X(MES_INTERVAL_USAGE, 96, "[a,b] ou [a,b,c]") \
  X(MES_COMMAND_USAGE, 97, "commande(liste de parame") \
  X(MES_INCOMPATIBLE_TYPES, 98, "INCOMPATIBLE TYPES") \
  X(MES_FUNCTION_NOT_DEFINED, 99, "FUNCTION NOT DEFINED") \
  X(MES_BADLY_FORMATTED_FILE, 103, "BADLY FORMATED FILE") \
  X(MES_NOT_IMPLEMENTED, 104, "NOT IMPLEMENTED") \
  X(MES_UNKNOWN_MARK, 105, "???") \
  X(MES_SOUND_OFF, 106, "SOUND OFF") \
  X(MES_COMPILATION_ERROR, 107, "\nCOMPILATION ERROR") \
  X(MES_EXECUTION_ERROR, 108, "\nEXECUTION ERROR") \
  X(MES_LINK_ERROR, 113, "\nLINK ERROR") \
  X(MES_UNSTACK_ERROR, 114, "UNSTACK ERROR") \
  X(MES_HTML_CODE_NOT_DEFINED, 116, "HTML CODE NOT DEFINED") \
  X(MES_TOO_MANY, 118, "TOO_MANY")

#define ORVELA_MESSAGES_1(X) \
  X(MESG_NOT_A_GRID, 15, "is not a grid") \
  X(MESG_OPENING_ZERO, 36, "opening zero") \
  X(MESG_BADLY_FORMATTED_VIEW, 65, "incorrectly formatted view") \
  X(MESG_OCCUPED_DEVICE, 71, "Occuped device") \
  X(MESG_GRAPHIC_OFF, 95, "graphic off")

#define ORVELA_MESSAGE_ENUMERATOR(name, number, text) name = number,
// Messages of vocabulary 0: voir_message(0, MES_...).
enum Message : int { ORVELA_MESSAGES_0(ORVELA_MESSAGE_ENUMERATOR) };
// Messages of vocabulary 1: voir_message(1, MESG_...).
enum GraphicMessage : int { ORVELA_MESSAGES_1(ORVELA_MESSAGE_ENUMERATOR) };
#undef ORVELA_MESSAGE_ENUMERATOR
