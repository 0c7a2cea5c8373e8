// Leaks show in numbers: of kernel handles (the system's own count is not to be had under Wine), of modules, and of
// drawing objects.
#pragma once

#include <cstddef>
#include <functional>

/// How many kernel handles this process has open.
std::size_t OpenHandles();
/// How many modules this process has loaded.
std::size_t LoadedModules();
/// Plays a thousand rounds, numbered from 0; the first ten may leave something behind, the others must not.
void ExpectNothingLeftBy(const std::function<void(int)>& round);
