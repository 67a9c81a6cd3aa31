// The help of the words of devices.
#include "device/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_device,
     "device(n) ini(\"KIND\") [name(\"..\") number(..) dim(..) char|float time(ms) speed(..) close lead debug inv "
     "coe(c) tran(t) audio] opens slot n (1 to 100); kinds LIR, DAT, MEM, COM, TCP, UDP, MOU, TIM, MID, ITR, AUD, "
     "UCS (ini(\"UCS\") help: the datagram exchange), OSC\n"
     "p=device(n) [dim(k)] [float|char] [format(\"F\")] [debug] [image(id)] reads it, device(n)=v writes it; device "
     "alone: the mean of the validated devices\n"
     "device(n..) validate(v) coe(c) tran(t) set, without a value read; device(n) edit, end; device edit, end, clean: "
     "every device\n"
     "device(n) lead texture(port) [dim(bytes)] [time(ms)] [close]: a UDP server; device(n) name(\"host\") "
     "texture(port) [dim time close]: a UDP client (port 8889, 1024 bytes by default)\n"
     "device(n) ini(\"OSC\") lead number(port): an OSC server (number(0): any free port); device(n) ini(\"OSC\") "
     "name(\"host\") number(port): an OSC client, answered on a port of its own; dim(bytes) the largest message kept "
     "(1 KB by default); m=device(n) the oldest message not routed: a list of its address, then its numbers (int32, "
     "float32, int64, double, char, true 1, false 0) together, each string, each blob as its bytes; NIL when none; "
     "device(n) float: the numbers alone; bundles come message by message, in order; device(n) format(\"/address\") "
     "[type(\"ifsb\")] = v sends v (numbers as float32, texts as strings, or as the types say: i f h d c s S b T F N I); "
     "device(n) format(\"/pattern\") func(\"f\") calls f(m) for each message the pattern (? * [] {}) matches, "
     "between the stages of an image and before console lines; format(\"/pattern\") func takes the route away, "
     "func alone lists them",
     "device(8) ini(\"TIM\"); device(8); device(8) end; device(9) ini(\"OSC\") lead number(0); device(9); device(9) end"},
    {KW_cin,
     "device(n) cin [format(\"F\")] [float|char]: at each image of the loop device n is read and its first three "
     "numbers place the pointer (x, y in pixels from the window's centre, y down; missing ones 0, NIL leaves it); "
     "device(n) cin(0) or device(n) end takes it back; device cin: its number, 0 for none",
     "device(2) ini(\"TIM\"); device(2) cin; device cin; device(2) cin(0)"},
    {KW_memory, "memory(id) makes a memory object, a store of values; word memory(id)=v sets its properties", "memory(1); var memory(1)=1,2,3; var memory(1)"},
};

}  // namespace

void install_device_help() { help_register("Devices", ENTRIES); }
