// The help of the words of sound.
#include "sound/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_audio, "generate audio(id) dim(seconds[,channels]) makes a silent sound; generate audio(id) time(t1,t2) sin(f,a,p) writes a sine between images t1 and t2; read audio(id) name(\"f.wav\") reads a sound, write audio(id) name(\"f.wav\") writes it, write audio(id) stock(t) name(\"f\") its levels; dim audio(id) its shape; the time unit is the image, 1/25 second; device(n) ini(\"AUD\") starts the live capture that audio dim, min, module and status read", "generate audio(1) dim(1); generate audio(1) time(0,25) sin(440,1,0); dim audio(1)"},
};

}  // namespace

void install_sound_help() { help_register("Sound", ENTRIES); }
