// The help of the words of images, added to the help table at install.
#pragma once

void install_image_help();
