// What an installation step tells its user: one line each, and a failure ends the installation.
#pragma once

#include <afx.h>
#include <stdexcept>
#include <string>

/// A step that could not be done; what() says which and why.
class StepFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
    /// With the system's error number.
    StepFailure(const std::string& what, unsigned long error)
        : std::runtime_error(what + " (error " + std::to_string(error) + ")")
    {
    }
};

/// Prints one finished step.
void Report(const char* done, const CString& subject);
