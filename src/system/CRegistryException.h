// The registry layer's exception.
#pragma once

#include <afx.h>

/// Thrown by CRegistry by pointer, allocated with `new`: whoever catches it calls Delete().
class AFX_EXT_CLASS CRegistryException : public CException
{
    DECLARE_DYNAMIC(CRegistryException)
public:
    explicit CRegistryException(LONG errorCode);
    ~CRegistryException() override;

    /// Shows nothing and returns 0: what a failed registry operation means to the user is for the caller to say.
    int ReportError(UINT nType = MB_OK, UINT nMessageID = 0) override;

    LONG m_lErrorCode; ///< what the registry call returned, a Windows error code
};
