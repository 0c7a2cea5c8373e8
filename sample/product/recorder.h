/* What the portal asks of the recorder library. */
#pragma once

#include "diag/UsagePortal.h"

/* Type of the recorder library's exported function "MakeRecorder". */
typedef HRESULT(STDAPICALLTYPE* MakeRecorderFunction)(ICairnfieldRecorder** recorder);
