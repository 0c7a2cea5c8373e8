// The tests' configuration library (testconf.c) writes down every call; its log is empty at the beginning of a test and
// gone at the end.
#pragma once

#include "ConfigItems.h"
#include "support/TestProduct.h"

class ConfigurationLog
{
public:
    ConfigurationLog() { DeleteFileA(Path().c_str()); }
    ~ConfigurationLog() { DeleteFileA(Path().c_str()); }
    ConfigurationLog(const ConfigurationLog&) = delete;
    ConfigurationLog& operator=(const ConfigurationLog&) = delete;

    std::string Text() const { return FileText(Path()); }

private:
    static std::string Path() { return TestFolder() + "testconf.log"; }
};
