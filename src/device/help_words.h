// The help of the words of devices, added to the help table at install.
#pragma once

void install_device_help();
