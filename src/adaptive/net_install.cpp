// The networks' place in the system: their commands' rows.
#include "adaptive/net_commands.h"
#include "adaptive/net_internal.h"
#include "adaptive/network.h"

void install_network() {
  install_network_commands();
  install_network_screen();
  install_network_drivers();
}
