#include "device/device_kinds.h"

#include "device/osc_device.h"

#include <cstring>

namespace {

// Kind 19 (the cellular automaton) has its slot only.
const KindRow KINDS[] = {
    {DEV_LIR, "LIR", 0, "Fichier %s ", ouvrir_fichier, lire_fichier, ecrire_fichier, nullptr},
    {DEV_MEM, "MEM", 0, "Memoire partagee nom = %s", ouvrir_memoire, lire_memoire, ecrire_memoire, fermer_memoire},
    {DEV_COM, "COM", 0, "Port serie %s", ouvrir_serie, lire_serie, ecrire_serie, fermer_serie},
    {DEV_TCP_CLIENT, "TCP", DEV_TCP_SERVEUR, "TCP_client %s -> host", ouvrir_tcp_client, lire_socket, ecrire_socket,
     fermer_socket},
    {DEV_UDP_CLIENT, "UDP", DEV_UDP_SERVEUR, "UDP_client %s -> host", ouvrir_udp_client, lire_socket, ecrire_socket,
     fermer_socket},
    {DEV_MID, "MID", 0, "MIDI", ouvrir_midi, lire_midi, nullptr, fermer_midi},
    {DEV_TCP_SERVEUR, nullptr, 0, "TCP_serveur host %s", ouvrir_tcp_serveur, lire_socket, ecrire_socket,
     fermer_socket},
    {DEV_UDP_SERVEUR, nullptr, 0, "UDP_serveur host %s", ouvrir_udp_serveur, lire_socket, ecrire_socket,
     fermer_socket},
    {DEV_MOU, "MOU", 0, "MOUSE\n", nullptr, lire_souris, nullptr, nullptr},
    {DEV_AUD, "AUD", 0, "AUDIO\n", ouvrir_audio, lire_audio, nullptr, nullptr},
    {DEV_ITR, "ITR", 0, "ITR", ouvrir_interruption, lire_interruption, nullptr, nullptr},
    {DEV_DAT, "DAT", 0, "Datas %s", ouvrir_datas, lire_datas, nullptr, nullptr},
    {DEV_UCS_CLIENT, "UCS", DEV_UCS_SERVEUR, "---- Type : UCS ---- Nouveau Client UDP ----\n", ouvrir_ucs_client,
     lire_ucs, ecrire_ucs, fermer_ucs},
    {DEV_UCS_SERVEUR, nullptr, 0, "---- Type : UCS ---- Nouveau Serveur UDP ----\n", ouvrir_ucs_serveur,
     lire_ucs, ecrire_ucs, fermer_ucs},
    {DEV_TIM, "TIM", 0, "---- Type : Timer - Valeur Timer (sec): ", ouvrir_horloge, lire_horloge, ecrire_horloge,
     nullptr},
    {DEV_AUTOMATE, nullptr, 0, "", ouvrir_non_implemente, nullptr, nullptr, nullptr},
    {DEV_OSC_CLIENT, "OSC", DEV_OSC_SERVEUR, "OSC_client %s", ouvrir_osc_client, lire_osc, ecrire_osc, fermer_osc,
     commande_osc},
    {DEV_OSC_SERVEUR, nullptr, 0, "OSC_serveur port %s", ouvrir_osc_serveur, lire_osc, ecrire_osc, fermer_osc,
     commande_osc},
};

}  // namespace

const KindRow* kind_row(int type) {
  for (const KindRow& k : KINDS)
    if (k.Type == type) return &k;
  return nullptr;
}

const KindRow* kind_by_ini(const char* ini, bool lead) {
  if (!ini) return nullptr;
  for (const KindRow& k : KINDS)
    if (k.ini && std::strcmp(k.ini, ini) == 0) return lead && k.lead ? kind_row(k.lead) : &k;
  return nullptr;
}
