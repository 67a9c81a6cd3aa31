// The help of the words of sound.
#include "sound/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_audio, "read audio(id) name(\"f.wav\") reads a sound; write audio(id) name(\"f.wav\") writes it, write audio(id) stock(t) name(\"f.stock\") its levels; generate audio(id) sin(freq,amp,phase) synthesises; audio dim, min, module, status read the live capture (device ini(\"AUD\") starts it); the time unit is the image, 1/25 second", "generate audio(1) sin(440,1,0) time(25); write audio(1) name(\"help_la.wav\")"},
};

}  // namespace

void install_sound_help() { help_register("Sound", ENTRIES); }
