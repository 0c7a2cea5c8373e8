// The framework's windows and drawing.
#pragma once

#include "afx.h"
#include "afx/Resources.h"
