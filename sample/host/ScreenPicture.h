// Pictures of the screen.
#pragma once

#include <afxwin.h>
#include <string>

/// Saves a rectangle of the screen as a bitmap file of 24 bits a pixel; false when it could not be written.
bool SaveScreen(const CRect& rect, const std::string& path);
