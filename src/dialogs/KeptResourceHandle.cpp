#include "dialogs/KeptResourceHandle.h"

KeptResourceHandle::KeptResourceHandle() : m_hKept(nullptr) {}

KeptResourceHandle::~KeptResourceHandle()
{
    if (m_hKept)
        AfxSetResourceHandle(m_hKept);
}

void KeptResourceHandle::Keep()
{
    m_hKept = AfxGetResourceHandle();
}
