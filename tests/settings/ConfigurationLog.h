// What the tests' configuration library (testconf.c) writes down of its calls, for as long as the object lives.
#pragma once

#include "ConfigItems.h"
#include "support/TestProduct.h"

class ConfigurationLog
{
public:
    ConfigurationLog() { SetEnvironmentVariableA("CONFIGURATION_LOG", m_path.c_str()); }
    ~ConfigurationLog()
    {
        SetEnvironmentVariableA("CONFIGURATION_LOG", nullptr);
        DeleteFileA(m_path.c_str());
    }
    std::string Text() const { return FileText(m_path); }

private:
    const std::string m_path = TestFolder() + "testconf.log";
};
