// The help of the words of devices.
#include "device/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_device,
     "device(n) ini(\"KIND\") [name(\"..\") number(..) dim(..) char|float time(ms) speed(..) close lead debug inv "
     "coe(c) tran(t) audio] opens slot n (1 to 100); kinds LIR, DAT, MEM, COM, TCP, UDP, MOU, TIM, MID, ITR, AUD, "
     "UCS (ini(\"UCS\") help: the datagram exchange)\n"
     "p=device(n) [dim(k)] [float|char] [format(\"F\")] [debug] [image(id)] reads it, device(n)=v writes it; device "
     "alone: the mean of the validated devices\n"
     "device(n..) validate(v) coe(c) tran(t) set, without a value read; device(n) edit, end; device edit, end, clean: "
     "every device\n"
     "device(n) lead texture(port) [dim(bytes)] [time(ms)] [close]: a UDP server; device(n) name(\"host\") "
     "texture(port) [dim time close]: a UDP client (port 8889, 1024 bytes by default)",
     "device(8) ini(\"TIM\"); device(8); device(8) end"},
    {KW_cin,
     "device(n) cin [format(\"F\")] [float|char]: at each image of the loop device n is read and its first three "
     "numbers place the pointer (x, y in pixels from the window's centre, y down; missing ones 0, NIL leaves it); "
     "device(n) cin(0) or device(n) end takes it back; device cin: its number, 0 for none",
     "device(2) ini(\"TIM\"); device(2) cin; device cin; device(2) cin(0)"},
    {KW_memory, "memory(id) makes a memory object, a store of values; word memory(id)=v sets its properties", "memory(1); var memory(1)=1,2,3; var memory(1)"},
};

}  // namespace

void install_device_help() { help_register("Devices", ENTRIES); }
