// MIDI input through the ALSA sequencer: a client "ORVELA" with one
// input port, connected to a given sender or left for others to connect
// (aconnect).
#pragma once
#include <string>

struct MidiIn;

// Opens the input; `source` above 0 is the sequencer client connected
// to it (its port 0). Null with the cause in *why when there is no
// sequencer or the connection fails.
MidiIn* midi_open(int source, std::string* why);
// Takes every event that arrived; true with the last channel message's
// three bytes when there was one since the last call.
bool midi_poll(MidiIn* m, unsigned char msg[3]);
// The sequencer address of the input port ("client:port").
std::string midi_address(const MidiIn* m);
void midi_close(MidiIn* m);
