// ORVELA: start-up, then the console loop (or the window's loop).
#include "app/orvela_main.h"

int main(int argc, char** argv) { orvela_main(argc, argv); }
