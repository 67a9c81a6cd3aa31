// The body of main, shared by the program and the test harnesses that run
// it with probes of their own.
#pragma once

[[noreturn]] void orvela_main(int argc, char** argv);
