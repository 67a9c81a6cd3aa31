// The networks' place in the system: their commands' rows.
#include "adaptive/net_commands.h"
#include "adaptive/net_internal.h"
#include "adaptive/network.h"
#include "kernel/keywords.h"
#include "persist/object_file.h"

void install_network() {
  install_network_commands();
  install_network_screen();
  install_network_drivers();
  // A taught network is work: `bye` asks about it in the words of the
  // other kinds' questions, and a signal's end keeps it.
  suivre_travail(KW_network, 0, 0, " Networks have not been saved, leave (0,1) ?\a", ".net");
}
