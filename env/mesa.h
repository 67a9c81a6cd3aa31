/* ORVELA interpreter vocabulary: messages, numbered by position */
|0: ?
|1: ------------------------------\n
|2: OVERFLOW\7\n
|3: PATENTHESIS ERROR ()\7\n
|4: line
|5: SEE YOU SOON!...\n
|6: ILLEGAL ASSIGNMENT\7\n
|7: new function
|8: ABANDONMENT\n
|9: MISSING\7\n
|10: FATAL ERROR\7\n
|11: WARNING\n
|12: OVERFLOW, increase Dim_ev (in enva.h)\7\n
|13: OVERFLOW, increase Dim_mac (in enva.h)\7\n
|14: INCOHERENT\7\n
|15: TRONCADET DATAS\n
text cut at pri characters (option pri=)\7\n
|16: MALLOC ERROR\7\n
|17: arc r,a,da,n\7\n
|18: reallocation\n
|19: h: Help\n
|20: *** bottom ***\n
|21: *** top ***\n
|22: EMPTY\7\n
|23: a: add\n
b: bottom\n
c: change\n
d: delete\n
f: find\n
h: help\n
i: insert\n
l: list\n
n: next\n
p: previous\n
q: quit\n
s: save\n
t: top\n
|24: functione\n
|25: octets\n
|26: modified buffer, exit (0,1) ? \7\n
|27: ENABLE TO PROCESS\n
|28: NOT FOUND\7\n
|29: ???\n
|30: COMPILE OFF\7\n
|31: LINK ERROR\7\n
|32: OPERATOR ERROR\7\n
|33: for(ini;cond;inc) { ... }\7\n
|34: BLOCK ERROR {}\7\n
|35: NOT INITIALIZED VARIABLE\7\n
|36: READ ERROR\7\n
|37: WRITE ERROR\7\n
|38: EXISTS, WRITE (0,1) ?\7\n
|39: ???
|40: ???
|41: NON DEFINED FUNCTION\7\n
|42: sysinfo
|43: DIRECTIVE ERROR\7\n
|44: FUNCTION(liste)\7\n
|45: if(cond) {bloc} or if(cond) {bloc1} else {bloc2}\7\n
|46: ILLEGAL SPACE\7\n
|47: while(condition) { ... }\7\n
|48: =
|49: SQUARE ROOT < 0\7\n
|50: LINK OFF\7\n
|51: HOOK ERROR []\7\n
|52: ???
|53: ???
|54: time out\7\n
|55: NO LABEL FOUND\7\n
|56: DIVISION BY ZERO\7\n
|57: ILLEGAL BREAK\7\n
|58: switch(expression) { case 0: ... case(expr): ... default: ...}\7\n
|59: case constante: ou case(expr):\7\n
|60: ILLEGAL NAME\7\n
|61: ILLEGAL INDEX\7\n
|62: FUNCTION(expression)\7\n
|63: MULTIPLE DEFINITION\7\n
|64: ERROR COMMENT\7\n
|65: UNKNOWN\7\n
|66: ILLEGAL\7\n
|67: DISK FULL\7\n
|68: UNKNOWN DIRECTIVE\7\n
|69: log < 0\7\n
|70: FUNCTIONS HAVE NOT BEEN SAVED (0,1) ?\7
|71: CONTINUE (no:0, yes:1, command:2) ?\7\n
|72: CONTINUE\7\n
|73: INFINITE RECURSION\7\n
|74: BRACKET ERROR {}\7\n
|75: SYNTAX ERROR\7\n
|76: lire ... "name"\7\n
|77: gare ... "name"\7\n
|78: ENTER (q: quitte)
|79: DEBUG>
|80: compile("name")\7\n
|81: ERROR\7\n
|82: COMMAND\7\n
|83: INCOMPLETE STRING\7\n
|84: var("nom")\7\n
|85: dup func("name")\7\n
|86: (?)
|87: var fonc "name"\7\n
|88: IS A VARIABLE\7\n
|89: IS A COMMAND\7\n
|90: exit (0,1) ?\7\n
|91: IMPOSSIBLE\7\n
|92: format("<descriptif>string")
|93: STOP "name" or STOP "name",num\7\n
|94: ERROR OF CONDITION EVALUATION\7\n
|95: for(i=depart,arrivee,pas) { ... }\7\n
|96: [a,b] ou [a,b,c]\7\n
|97: commande(liste de parametres)\7\n
|98: INCOMPATIBLE TYPES\7\n
|99: FUNCTION NOT DEFINED\7\n
|100: ERROR FORMAL VARIABLE\7\n
|101: ???
|102: shared memory
|103: BADLY FORMATED FILE\7\n
|104: NOT IMPLEMENTED\7\n
|105: ???
|106: SOUND OFF\7\n
|107: \nCOMPILATION ERROR\7\n
|108: \nEXECUTION ERROR\7\n
|109: NO MESSAGES\7\n
|110: TOO MANY FUNCTION CALLS\7\n
|111: HELP\n
|112: line
|113: \nLINK ERROR\7\n
|114: UNSTACK ERROR\7\n
|115: END
|116: HTML CODE NOT DEFINED\7\n
|117: ERROR HTML CODE: \7\n
|118: TOO_MANY
