// The help of the words of devices.
#include "device/help_words.h"

#include "kernel/keywords.h"
#include "language/help_table.h"

namespace {

constexpr HelpEntry ENTRIES[] = {
    {KW_device, "device(n) ini(\"KIND\") [name(\"..\") number(..) dim(..) char|float time(ms) speed(..) close lead coe(c) tran(t)] opens slot n (1 to 100); kinds LIR, DAT, MEM, COM, TCP, UDP, MOU, TIM, MID, ITR, UCS; device(n) reads it, device(n)=v writes it; device(n) edit; device(n) end", "device(8) ini(\"TIM\"); device(8); device(8) end"},
    {KW_memory, "memory(id) makes a memory object, a store of values; word memory(id)=v sets its properties", "memory(1); var memory(1)=1,2,3; var memory(1)"},
};

}  // namespace

void install_device_help() { help_register("Devices", ENTRIES); }
