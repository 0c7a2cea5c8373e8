// The tour: the job status window driven by real input, with a picture of every state.
#pragma once

#include "JobStatusWindow.h"
#include <string>

/// Shows the window in one layout, goes through its states with mouse and keyboard, and saves a picture (.bmp) of each
/// in the folder, named "<layout>-<number>-<state>.bmp". Returns how many pictures were saved, -1 on the first one that
/// could not be.
int TakeTour(const std::string& folder, bool rightToLeft);
