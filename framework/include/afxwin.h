// The framework's windows and drawing.
#pragma once

#include "afx.h"
#include "afx/Resources.h"
#include "afx/Geometry.h"
#include "afx/CGdiObject.h"
#include "afx/CDC.h"
#include "afx/CWnd.h"
#include "afx/Controls.h"
#include "afx/Dialogs.h"
#include "afx/CWinApp.h"
