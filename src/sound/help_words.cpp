// The help of the words of sound.
#include "sound/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_audio, "generate audio(id) dim(seconds[,channels]) makes a silent sound; generate audio(id) time(t1,t2) sin(f,a,p) writes a sine between images t1 and t2; read audio(id) name(\"f.wav\") reads a sound, write audio(id) name(\"f.wav\") writes it, write audio(id) stock(t) name(\"f\") its levels; dim audio(id) its shape; the time unit is the image, 1/25 second; device(n) ini(\"AUD\") dim(d) starts the live capture (ORVELA_AUDIO=alsa, none or file:PATH.wav) with a window of 2^d bytes; then audio dim the window, audio min, audio module and audio max[(n)] the running minimum, mean and maximum (or the last n maxima), audio status 1 when capturing, audio NP the bytes of the last poll, audio precision the window in seconds and a bin in Hz, audio ring the ring of (mean, min, max), audio read (mean, min, max) after a fresh analysis, with var the window, sort the spectrum (real then imaginary), rand the change since the last window, limit the envelope (peaks then changes), average the ring's means; audio puls(level, tolerance) the index of the first sample above level + tolerance; audio ini [dim(d)] [tran(offset)] [coe(gain)] [limit(gate, limit)] [law(threshold, scale, exponent)] [period(calls, target)] (the gain made |range / (calls * 127) - target| every that many windows) [average(n)] [normal(0|1)] [envelope(n, scale)] [sort(scale, n, scale)] sets the analysis, dim restarting the capture; audio edit prints it, audio end stops the capture; audio exec [vol(ids)] [coe(c)] moves each image the volumes by their audio tran and audio rota properties (coe audio, coe tran, coe rota, limit tran, limit rota, audio win, speed audio), audio STOP ends that, audio anc puts them back; audio network(ids) [coe(c)] runs the window, times c/127, through networks", "generate audio(1) dim(1); generate audio(1) time(0,25) sin(440,1,0); dim audio(1); audio dim; audio precision"},
};

}  // namespace

void install_sound_help() { help_register("Sound", ENTRIES); }
