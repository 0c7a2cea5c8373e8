// A predefined key of the registry, replaced for this process by an empty key of the test's own, which is gone with the
// object. Other processes see the real one.
#pragma once

#include <string>
#include <windows.h>

class RedirectedRoot
{
public:
    explicit RedirectedRoot(HKEY root);
    ~RedirectedRoot();
    RedirectedRoot(const RedirectedRoot&) = delete;
    RedirectedRoot& operator=(const RedirectedRoot&) = delete;

private:
    HKEY m_root;
    std::string m_path;
};
