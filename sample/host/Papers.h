// The papers of an installed printer, in words.
#pragma once

#include <string>
#include <vector>

struct Paper
{
    std::string name; ///< as the driver calls it
    std::string area; ///< extent and offsets of the printable area in pixels
    std::string resolution;
    std::string twin; ///< name of the paper of the same size that is printed up to its edges, or "none"
};

/// In the driver's order; empty when the printer or its papers cannot be read.
std::vector<Paper> PapersOf(const char* printer);
