#include "platform/midi.h"

#include <alsa/asoundlib.h>

#include <cerrno>

struct MidiIn {
  snd_seq_t* seq = nullptr;
  int port = -1;
};

namespace {

// ALSA prints its own complaints on standard error: the caller reports.
void silent(const char*, int, const char*, int, const char*, ...) {}

// The three bytes of a channel message event; false for other events.
bool channel_bytes(const snd_seq_event_t* ev, unsigned char msg[3]) {
  const auto& n = ev->data.note;
  const auto& c = ev->data.control;
  switch (ev->type) {
    case SND_SEQ_EVENT_NOTEON: msg[0] = static_cast<unsigned char>(0x90 | n.channel); msg[1] = n.note; msg[2] = n.velocity; return true;
    case SND_SEQ_EVENT_NOTEOFF: msg[0] = static_cast<unsigned char>(0x80 | n.channel); msg[1] = n.note; msg[2] = n.velocity; return true;
    case SND_SEQ_EVENT_KEYPRESS: msg[0] = static_cast<unsigned char>(0xA0 | n.channel); msg[1] = n.note; msg[2] = n.velocity; return true;
    case SND_SEQ_EVENT_CONTROLLER:
      msg[0] = static_cast<unsigned char>(0xB0 | c.channel);
      msg[1] = static_cast<unsigned char>(c.param & 0x7F);
      msg[2] = static_cast<unsigned char>(c.value & 0x7F);
      return true;
    case SND_SEQ_EVENT_PGMCHANGE:
      msg[0] = static_cast<unsigned char>(0xC0 | c.channel); msg[1] = static_cast<unsigned char>(c.value & 0x7F); msg[2] = 0;
      return true;
    case SND_SEQ_EVENT_CHANPRESS:
      msg[0] = static_cast<unsigned char>(0xD0 | c.channel); msg[1] = static_cast<unsigned char>(c.value & 0x7F); msg[2] = 0;
      return true;
    case SND_SEQ_EVENT_PITCHBEND: {
      const int v = c.value + 8192;
      msg[0] = static_cast<unsigned char>(0xE0 | c.channel);
      msg[1] = static_cast<unsigned char>(v & 0x7F);
      msg[2] = static_cast<unsigned char>((v >> 7) & 0x7F);
      return true;
    }
    default: return false;
  }
}

}  // namespace

MidiIn* midi_open(int source, std::string* why) {
  snd_lib_error_set_handler(silent);
  snd_seq_t* seq = nullptr;
  int r = snd_seq_open(&seq, "default", SND_SEQ_OPEN_INPUT, SND_SEQ_NONBLOCK);
  if (r < 0) {
    *why = std::string("no MIDI sequencer (") + snd_strerror(r) + ")";
    return nullptr;
  }
  snd_seq_set_client_name(seq, "ORVELA");
  const int port = snd_seq_create_simple_port(seq, "input", SND_SEQ_PORT_CAP_WRITE | SND_SEQ_PORT_CAP_SUBS_WRITE,
                                              SND_SEQ_PORT_TYPE_MIDI_GENERIC | SND_SEQ_PORT_TYPE_APPLICATION);
  if (port < 0) {
    *why = std::string("no MIDI input port (") + snd_strerror(port) + ")";
    snd_seq_close(seq);
    return nullptr;
  }
  if (source > 0 && (r = snd_seq_connect_from(seq, port, source, 0)) < 0) {
    *why = "MIDI client " + std::to_string(source) + " cannot be connected (" + snd_strerror(r) + ")";
    snd_seq_close(seq);
    return nullptr;
  }
  return new MidiIn{seq, port};
}

bool midi_poll(MidiIn* m, unsigned char msg[3]) {
  if (!m) return false;
  bool got = false;
  snd_seq_event_t* ev = nullptr;
  for (;;) {
    const int r = snd_seq_event_input(m->seq, &ev);
    if (r == -ENOSPC) continue;  // the queue overran: what follows still counts
    if (r < 0 || !ev) break;
    if (channel_bytes(ev, msg)) got = true;
  }
  return got;
}

std::string midi_address(const MidiIn* m) {
  if (!m) return "";
  return std::to_string(snd_seq_client_id(m->seq)) + ":" + std::to_string(m->port);
}

void midi_close(MidiIn* m) {
  if (!m) return;
  snd_seq_close(m->seq);
  delete m;
}
