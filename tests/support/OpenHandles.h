// Leaks of kernel handles show in their number: the system's own count is not to be had under Wine.
#pragma once

#include <cstddef>

/// How many kernel handles this process has open.
std::size_t OpenHandles();
