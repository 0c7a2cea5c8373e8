// The common controls.
#pragma once

#include "afxwin.h"
#include "afx/CToolTipCtrl.h"
