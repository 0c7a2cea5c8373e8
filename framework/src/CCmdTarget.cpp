// Commands and message maps.
#include "afx/CCmdTarget.h"
#include "MessageSearch.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

CCmdTarget::CCmdTarget() = default;
CCmdTarget::~CCmdTarget() = default;

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap()
{
    static const AFX_MSGMAP_ENTRY entries[] = {{AfxMsgWindow, 0, 0, 0, 0, nullptr, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const
{
    return GetThisMessageMap();
}

BOOL CCmdTarget::OnCmdMsg(UINT id, int code, void*, AFX_CMDHANDLERINFO*)
{
    AFX_MSGCALL call = {WM_COMMAND, MAKEWPARAM(id, code), 0, 0};
    return framework::CallHandler(*this, GetMessageMap(), {AfxMsgWindow, WM_COMMAND, static_cast<UINT>(code), id},
                                  call);
}

namespace framework
{
bool CallHandler(CCmdTarget& target, const AFX_MSGMAP* map, const MessageKey& key, AFX_MSGCALL& call)
{
    // Commands and notifications are told apart by sender and code, other messages by their number alone.
    const bool hasCode = key.message == WM_COMMAND || key.message == WM_NOTIFY;
    const bool hasId = hasCode && key.kind == AfxMsgWindow;
    for (; map; map = map->pfnGetBaseMap ? map->pfnGetBaseMap() : nullptr)
    {
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->pThunk; ++entry)
        {
            const UINT message = entry->pRegistered ? *entry->pRegistered : entry->nMessage;
            if (message != key.message || entry->kind != key.kind)
                continue;
            if (hasCode && entry->nCode != key.code)
                continue;
            if (hasId && (key.id < entry->nID || key.id > entry->nLastID))
                continue;
            if (entry->pThunk(target, call))
                return true;
        }
    }
    return false;
}
} // namespace framework
