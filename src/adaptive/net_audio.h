// The networks fed by the live sound: `audio network(ids)`.
#pragma once

void install_audio_network();
