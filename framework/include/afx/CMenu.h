// Menus.
#pragma once

#include "afx/CObject.h"
#include "afx/CString.h"

class CWnd;

/// A menu, destroyed with its object unless detached. FromHandle's objects own nothing.
class FRAMEWORK_API CMenu : public CObject
{
    DECLARE_DYNCREATE(CMenu)
  public:
    CMenu();
    ~CMenu() override;

    HMENU m_hMenu;
    HMENU GetSafeHmenu() const;
    operator HMENU() const;
    static CMenu* FromHandle(HMENU menu);
    static void DeleteTempMap();
    BOOL Attach(HMENU menu);
    HMENU Detach();

    BOOL CreateMenu();
    BOOL CreatePopupMenu();
    BOOL LoadMenu(LPCSTR name);
    BOOL LoadMenu(UINT id);
    BOOL DestroyMenu();
    BOOL AppendMenu(UINT flags, UINT_PTR id = 0, LPCSTR text = nullptr);
    BOOL InsertMenu(UINT position, UINT flags, UINT_PTR id = 0, LPCSTR text = nullptr);
    BOOL ModifyMenu(UINT position, UINT flags, UINT_PTR id = 0, LPCSTR text = nullptr);
    BOOL DeleteMenu(UINT position, UINT flags);
    BOOL RemoveMenu(UINT position, UINT flags);
    UINT CheckMenuItem(UINT id, UINT check);
    UINT EnableMenuItem(UINT id, UINT enable);
    UINT GetMenuState(UINT id, UINT flags) const;
    UINT GetMenuItemCount() const;
    UINT GetMenuItemID(int position) const;
    int GetMenuString(UINT id, CString& text, UINT flags) const;
    CMenu* GetSubMenu(int position) const;
    BOOL SetDefaultItem(UINT item, BOOL byPosition = FALSE);
    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* window, LPCRECT rect = nullptr);
};
