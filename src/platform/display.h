// Whether an X display can be opened: the window toolkit ends the process
// when it cannot, so start-up asks first.
#pragma once

bool display_available();
