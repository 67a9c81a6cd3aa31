#include "kernel/startup.h"

const char* const ORVELA_BANNER = "ORVELA - interactive language for real-time graphics and animation\n";
const char* const ORVELA_VERSION = "ORVELA 0.1 for Linux\n";
