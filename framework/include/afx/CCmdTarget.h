// What receives commands.
#pragma once

#include "afx/CObject.h"
#include "afx/MessageMap.h"

struct AFX_CMDHANDLERINFO; // who would handle a command; nobody asks in this framework

/// The base of everything that has a message map.
class FRAMEWORK_API CCmdTarget : public CObject
{
    DECLARE_DYNAMIC(CCmdTarget)
public:
    CCmdTarget();
    ~CCmdTarget() override;

    /// Hands a command (`code` 0) or a control's notification to its handler; FALSE without one.
    virtual BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* handlerInfo);

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    virtual const AFX_MSGMAP* GetMessageMap() const;
};
