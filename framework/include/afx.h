// The framework without windows: objects, text, exceptions, files, time.
#pragma once

#include "afx/Platform.h"
#include "afx/CObject.h"
#include "afx/CString.h"
#include "afx/CException.h"
#include "afx/CTime.h"
#include "afx/CFile.h"
#include "afx/CFileFind.h"
