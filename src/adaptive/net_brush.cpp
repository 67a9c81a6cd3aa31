// Brushes that paint through a network.
#include "adaptive/net_commands.h"
#include "kernel/keywords.h"
#include "kernel/report.h"

int BRUSH_NETWORK(word*, const word*, word*, const word*) {
  voir_mot(KW_brush);
  voir_message(0, MES_NOT_IMPLEMENTED);
  return -1;
}
