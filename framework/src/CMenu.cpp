// Menus.
#include "afx/CMenu.h"
#include "afx/CWnd.h"
#include "afx/Resources.h"
#include "ThreadState.h"

using framework::State;

IMPLEMENT_DYNCREATE(CMenu, CObject)

CMenu::CMenu() : m_hMenu(nullptr) {}

CMenu::~CMenu()
{
    DestroyMenu();
}

HMENU CMenu::GetSafeHmenu() const
{
    const auto* volatile self = this; // documented to answer for a null object
    return self ? m_hMenu : nullptr;
}

CMenu::operator HMENU() const
{
    return GetSafeHmenu();
}

CMenu* CMenu::FromHandle(HMENU menu)
{
    return State().menus.Find<CMenu>(menu);
}

void CMenu::DeleteTempMap()
{
    State().menus.DeleteTemporary();
}

BOOL CMenu::Attach(HMENU menu)
{
    if (!menu)
        return FALSE;
    m_hMenu = menu;
    State().menus.Set(menu, this);
    return TRUE;
}

HMENU CMenu::Detach()
{
    const HMENU menu = m_hMenu;
    if (menu && State().menus.Permanent(menu) == this)
        State().menus.Remove(menu);
    m_hMenu = nullptr;
    return menu;
}

BOOL CMenu::CreateMenu()
{
    return Attach(::CreateMenu());
}

BOOL CMenu::CreatePopupMenu()
{
    return Attach(::CreatePopupMenu());
}

BOOL CMenu::LoadMenu(LPCSTR name)
{
    return Attach(::LoadMenuA(AfxFindResourceHandle(name, RT_MENU), name));
}

BOOL CMenu::LoadMenu(UINT id)
{
    return LoadMenu(MAKEINTRESOURCEA(id));
}

BOOL CMenu::DestroyMenu()
{
    return m_hMenu && ::DestroyMenu(Detach());
}

BOOL CMenu::AppendMenu(UINT flags, UINT_PTR id, LPCSTR text)
{
    return ::AppendMenuA(m_hMenu, flags, id, text);
}

BOOL CMenu::InsertMenu(UINT position, UINT flags, UINT_PTR id, LPCSTR text)
{
    return ::InsertMenuA(m_hMenu, position, flags, id, text);
}

BOOL CMenu::ModifyMenu(UINT position, UINT flags, UINT_PTR id, LPCSTR text)
{
    return ::ModifyMenuA(m_hMenu, position, flags, id, text);
}

BOOL CMenu::DeleteMenu(UINT position, UINT flags)
{
    return ::DeleteMenu(m_hMenu, position, flags);
}

BOOL CMenu::RemoveMenu(UINT position, UINT flags)
{
    return ::RemoveMenu(m_hMenu, position, flags);
}

UINT CMenu::CheckMenuItem(UINT id, UINT check)
{
    return ::CheckMenuItem(m_hMenu, id, check);
}

UINT CMenu::EnableMenuItem(UINT id, UINT enable)
{
    return static_cast<UINT>(::EnableMenuItem(m_hMenu, id, enable));
}

UINT CMenu::GetMenuState(UINT id, UINT flags) const
{
    return ::GetMenuState(m_hMenu, id, flags);
}

UINT CMenu::GetMenuItemCount() const
{
    return static_cast<UINT>(::GetMenuItemCount(m_hMenu));
}

UINT CMenu::GetMenuItemID(int position) const
{
    return ::GetMenuItemID(m_hMenu, position);
}

int CMenu::GetMenuString(UINT id, CString& text, UINT flags) const
{
    const int length = ::GetMenuStringA(m_hMenu, id, nullptr, 0, flags);
    ::GetMenuStringA(m_hMenu, id, text.GetBuffer(length), length + 1, flags);
    text.ReleaseBuffer(length);
    return length;
}

CMenu* CMenu::GetSubMenu(int position) const
{
    return FromHandle(::GetSubMenu(m_hMenu, position));
}

BOOL CMenu::SetDefaultItem(UINT item, BOOL byPosition)
{
    return ::SetMenuDefaultItem(m_hMenu, item, static_cast<UINT>(byPosition));
}

BOOL CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* window, LPCRECT rect)
{
    return ::TrackPopupMenu(m_hMenu, flags, x, y, 0, window ? window->m_hWnd : nullptr, rect);
}
