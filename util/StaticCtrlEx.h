// A static control that paints its own background.
#pragma once

#include "Controls.h"
#include "SubclassedControl.h"

class CStaticCtrlEx : public CSubclassedControl<CStatic> {
  private:
    Answer OnMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/) override {
        if (message != WM_ERASEBKGND) return std::nullopt;
        const RECT client = ToSystem(ClientRect());
        ::FillRect(reinterpret_cast<HDC>(wParam), &client, ::GetSysColorBrush(COLOR_BTNFACE));
        return TRUE;
    }
};
