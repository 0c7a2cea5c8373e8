// The suite's shortcuts: a group in the Programs menu of all users, and one on their desktop.
#pragma once

#include <afx.h>

/// Makes the group and the shortcuts to the programs in `programFolder` (with the backslash at its end). Throws
/// StepFailure.
void InstallShortcuts(const CString& programFolder);

/// Deletes the shortcuts, and the group unless the user has put something else into it. What is not there is no
/// failure. Throws StepFailure.
void RemoveShortcuts();
