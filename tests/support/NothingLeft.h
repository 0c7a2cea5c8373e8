// Leaks show in numbers, counted here: the system's own counts are not to be had everywhere.
#pragma once

#include <functional>

/// How many drawing objects of all kinds this process has, stock objects included.
int CountGdiObjects();

/// Checks at its end that there are no more drawing objects than at its beginning. Screen contexts that the system
/// keeps for later must have been made before.
class NoDrawingObjectLeft
{
public:
    ~NoDrawingObjectLeft();

private:
    const int m_before = CountGdiObjects();
};

/// Calls `round` with 0, 1, 2, ...: after the last round there must be no more drawing objects, windows of this thread,
/// kernel handles and modules than there were after the first `settled` ones.
void ExpectNothingLeftBehind(int rounds, const std::function<void(int)>& round, int settled = 10);
/// The same with a thousand rounds.
void ExpectNothingLeftBehind(const std::function<void(int)>& round);
