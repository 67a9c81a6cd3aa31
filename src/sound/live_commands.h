// The `audio` command's sub-commands, the "AUD" device's hooks and the
// loop's audio step:
//   audio dim | min | module | status | max[(n)] | NP | precision | ring
//   audio read [var | sort | rand | limit | average]
//   audio puls(level, tolerance[, passes])
//   audio ini [dim(n)] [tran(offset)] [coe(gain)] [limit(gate, limit)]
//             [law(threshold, scale, exponent)] [period(calls, target)]
//             [average(n)] [normal(0|1)] [envelope(n, scale)]
//             [sort(scale[, n, scale])]
//   audio edit | end | STOP | anc
//   audio exec [vol(ids)] [coe(c)]
//   audio play[(f1, f2, ...)] [time(ms)] [speed(step)]   (play_command.h)
#pragma once

void install_live_audio();
