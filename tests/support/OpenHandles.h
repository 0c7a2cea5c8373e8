// Leaks show in numbers: of kernel handles (the system's own count is not to be had under Wine) and of modules.
#pragma once

#include <cstddef>

/// How many kernel handles this process has open.
std::size_t OpenHandles();
/// How many modules this process has loaded.
std::size_t LoadedModules();
