// The drawing objects of this process, counted: the system's own counter does not work everywhere.
#pragma once

#include <functional>

/// How many there are, of all kinds, stock objects included.
int CountGdiObjects();

/// Calls `round` with 0, 1, 2, ...: after the last round there must be no more drawing objects, windows of this thread,
/// kernel handles and modules than there were after the first `settled` ones.
void ExpectNothingLeftBehind(int rounds, const std::function<void(int)>& round, int settled = 10);
