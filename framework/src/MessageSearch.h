// Looking a message up in message maps.
#pragma once

#include "afx/MessageMap.h"

namespace framework
{
struct MessageKey
{
    AFX_MSGKIND kind;
    UINT message;
    UINT code = 0;
    UINT id = 0;
};

/// Calls the first handler, from the class itself to its bases, that accepts the message; false without one.
bool CallHandler(CCmdTarget& target, const AFX_MSGMAP* map, const MessageKey& key, AFX_MSGCALL& call);
} // namespace framework
