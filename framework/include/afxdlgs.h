// The common dialogs.
#pragma once

#include "afxwin.h"
#include "afx/CommonDialogs.h"
