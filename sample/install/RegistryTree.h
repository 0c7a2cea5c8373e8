// Registry keys as an installer handles them, by the library's registry classes: values written into keys that are made
// when they are missing, and whole trees taken out again.
#pragma once

#include <afx.h>
#include "system/CSafeRegistry.h"

/// Makes or opens the key and writes a text or a number into it. `root` null: `key` is a key of the printer that the
/// registry object has as its friendly name. Throws StepFailure.
void WriteText(CSafeRegistry& registry, HKEY root, const CString& key, const char* name, const CString& text);
void WriteNumber(CSafeRegistry& registry, HKEY root, const CString& key, const char* name, unsigned long number);

/// Makes the key, or opens it when it is there. Throws StepFailure.
void MakeKey(CSafeRegistry& registry, HKEY root, const CString& key);

/// A text value of any type below HKEY_LOCAL_MACHINE as it stands, as long as a path may be; empty when there is none.
/// So does ShortcutCreation read the shell's folders.
CString ReadText(const CString& key, const char* name);

/// Deletes a key below HKEY_LOCAL_MACHINE with everything in it, then each parent that is left without keys and values,
/// up to and without `keep`. A key that is not there is no failure. Throws StepFailure.
void RemoveTree(const CString& key, const CString& keep);

/// Deletes one value below HKEY_LOCAL_MACHINE, then its key and parents as far as they are empty, as above.
void RemoveValue(const CString& key, const char* name, const CString& keep);
