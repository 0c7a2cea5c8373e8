// The drawing objects of this process, counted: the system's own counter does not work everywhere.
#pragma once

/// How many there are, of all kinds, stock objects included.
int CountGdiObjects();
