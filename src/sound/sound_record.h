// Recording the live level into a `.stock` file from the interaction
// loop: one (mean, max) pair an image, written when the count is reached.
#pragma once
#include <string>

// Starts a recording of `images` images into the file; 0, or -1 after
// a report.
int stock_audio_ini(const std::string& name, int images);
// STOCK_AUDIO, the loop's step: records the image's pair from the live
// capture and, once the count is reached, writes the block ("write"
// and the name printed) and stops. Without capture, the recording stops
// with the report of audio off. Allocates nothing. Always 0: a failed
// write is reported and ends the recording, not the loop.
int STOCK_AUDIO();
