// The help of the words of sound.
#include "sound/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_audio,
     "generate audio(id) dim(seconds[,channels]) makes a silent sound; generate audio(id) time(t1,t2) with sin(f,a,p) "
     "writes a sine between images t1 and t2, with coe(c...) under a curve, interpol(f2,a2) sweeping, var(d,r) in "
     "vibrato, NP(n) with harmonics, law(d) decaying, module(fm,i,...) frequency-modulated; two sin(...) multiply; "
     "cut, alea(a), puls(f,a,w), period(f,a,v...), poi(v...) drawn through points, memory from the read stream, "
     "stock(id) [sin(...)] led by .stock pairs, audio(id,source) [sin(...) interpol | period(f,a)] from a sound; "
     "alone var(d,r), min(v), law(d), interpol reshape the samples there; add mixes; read audio(id) name(\"f.wav\") "
     "reads a sound, write audio(id) name(\"f.wav\") writes it, write audio(id) stock(t) name(\"f\") its levels, "
     "write/read audio name(\"f\") all sounds as an object file; cut audio(id,src) time(t1,t2), concat audio(id,a,b) "
     "[time(t)], put audio(id,src), move audio(id,new), inherit audio(id,src) (its header), format audio(id) "
     "number(bits), dist audio(a,b), module audio(id,src), rand audio(id) coe(a); time audio(id) length and place, "
     "number audio the sounds; dynamic audio(id)=v plays it along the animation, follow vol(ids) audio(id) "
     "[coe(gain)] | cut | =gain scales volumes with its level; generate vol(id) audio(id) [NP(n)] [dim(w,h)] [inv] "
     "draws it; dim audio(id) its shape; the time unit is the image, 1/25 second; "
     "device(n) ini(\"AUD\") dim(d) starts the live capture (ORVELA_AUDIO=alsa, none or file:PATH.wav) with a window of 2^d bytes; then audio dim the window, audio min, audio module and audio max[(n)] the running minimum, mean and maximum (or the last n maxima), audio status 1 when capturing, audio NP the bytes of the last poll, audio precision the window in seconds and a bin in Hz, audio ring the ring of (mean, min, max), audio read (mean, min, max) after a fresh analysis, with var the window, sort the spectrum (real then imaginary), rand the change since the last window, limit the envelope (peaks then changes), average the ring's means; audio puls(level, tolerance) the index of the first sample above level + tolerance; audio ini [dim(d)] [tran(offset)] [coe(gain)] [limit(gate, limit)] [law(threshold, scale, exponent)] [period(calls, target)] (the gain made |range / (calls * 127) - target| every that many windows) [average(n)] [normal(0|1)] [envelope(n, scale)] [sort(scale, n, scale)] sets the analysis, dim restarting the capture; audio edit prints it, audio end stops the capture; audio exec [vol(ids)] [image(ids)] [coe(c)] moves each image the volumes (all with no list) by their audio tran, audio rota and audio dila properties (the mean level, or with audio win(i) the window's sample i; audio tran min|max|rand and the like from the minimum, the maximum or the change; coe audio, coe tran|rota|dila, limit tran|rota|dila, speed audio), meta func=\"f\" adds f(vol, level, min, max) as (tran, rot, dila), audio image=n1,n2.. lays on a volume or shows in an image the image its level picks by the bounds of audio period (every 25 by default), audio STOP ends that, audio anc puts them back; audio inv|max scale(ids) the values the scales keep under that pair; audio network(ids) [coe(c)] runs the window, times c/127, through networks; "
     "audio play(f1, f2, ...) [time(ms)] [speed(step)] beeps one note an image during the interaction, read in the "
     "table of frequencies (Hz, 20 to 11025) at a place moving by step (1) and turning back at either end, each note "
     "lasting time (40 ms, at most 1000), audio play alone stops it; notes and playing sounds go to ORVELA_AUDIO_OUT (alsa, none "
     "or file:PATH.wav)",
     "generate audio(1) dim(1); generate audio(1) time(0,25) sin(440) law(3); generate audio(1) time(0,25) min(0.1); "
     "cut audio(2,1) time(0,10); concat audio(3,1,2); dist audio(1,3); cube(1) dim(10); follow vol(1) audio(1) "
     "coe(0.5); generate vol(2) audio(1) NP(200); time audio(3); audio dim; audio precision; "
     "audio play(440, 660) time(80)"},
};

}  // namespace

void install_sound_help() { help_register("Sound", ENTRIES); }
