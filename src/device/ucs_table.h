// The records of the "UCS" datagram exchange, one per device number,
// beside the device table, and the buffer every send and receive uses.
#pragma once
#include <string>

#include "device/ucs_format.h"
#include "platform/sockets.h"

struct UcsRecord {
  int Type = 0;            // 17 server, 16 client
  int Inv = 0;             // 1 "MsbFirst", 0 "LsbFirst"
  int Local_pret = 0;
  int Role = 0;            // 0 server, 1 client
  std::string Nom_local = "?";
  NetAddress Adr_locale{};
  int Distant_pret = 0;
  int Type_distant = 0;    // 1 for a server's record, 0 for a client's
  std::string Nom_distant = "?";
  NetAddress Adr_distante{};
  int En_connexion = 0;
  NetAddress Adr_source{};
};

struct UcsState {
  UcsRecord Table_ucs[100];  // indexed by the device number minus 1
  unsigned char Tampon[UCS_TAMPON + 4];
};
