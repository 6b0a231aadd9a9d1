#include "Elevation.h"

#include <shellapi.h>

#include <string>

#include "CmdLine.h"
#include "Process.h"
#include "ProgramPath.h"
#include "Resources.h"
#include "resource.h"

namespace {

// A command of the system menu; the system keeps the low four bits.
constexpr UINT kCommandElevate = 0x40;

/// As menus draw it: 32 bits with transparency.
UniqueBitmap BitmapOf(const UniqueIcon& icon, Size size) {
    BITMAPINFO format{};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = size.width;
    format.bmiHeader.biHeight = size.height;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    UniqueBitmap bitmap(::CreateDIBSection(nullptr, &format, DIB_RGB_COLORS, &bits, nullptr, 0));
    const UniqueDc dc(::CreateCompatibleDC(nullptr));
    if (!bitmap || !dc) return {};
    const CSelectedObject selected(dc.Get(), bitmap.Get());
    ::DrawIconEx(dc.Get(), 0, 0, icon.Get(), size.width, size.height, 0, nullptr, DI_NORMAL);
    return bitmap;
}

/// The system's mark of what asks for these rights; null where it has none.
UniqueBitmap ShieldBitmap(UINT dpi) {
    SHSTOCKICONINFO shield{};
    shield.cbSize = sizeof shield;
    if (FAILED(::SHGetStockIconInfo(SIID_SHIELD, SHGSI_ICON | SHGSI_SMALLICON, &shield)) || !shield.hIcon)
        return {};
    return BitmapOf(UniqueIcon(shield.hIcon),
                    {::GetSystemMetricsForDpi(SM_CXSMICON, dpi), ::GetSystemMetricsForDpi(SM_CYSMICON, dpi)});
}

}  // namespace

void CElevation::OnInitDialog() {
    if (HasAdministratorRights()) return;
    m_shield = ShieldBitmap(::GetDpiForWindow(m_dialog.Handle()));
    std::wstring text = LoadText(IDS_RUN_ELEVATED);
    MENUITEMINFOW item{};
    item.cbSize = sizeof item;
    item.fMask = MIIM_ID | MIIM_STRING | MIIM_BITMAP;
    item.wID = kCommandElevate;
    item.dwTypeData = text.data();
    item.hbmpItem = m_shield.Get();
    const HMENU menu = ::GetSystemMenu(m_dialog.Handle(), FALSE);
    ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    ::InsertMenuItemW(menu, static_cast<UINT>(::GetMenuItemCount(menu)), /*by position*/ TRUE, &item);
}

bool CElevation::OnSysCommand(UINT command) {
    if (command != kCommandElevate) return false;
    // Disabled, it waits for a tool or an answer.
    if (!m_dialog.IsEnabled() || !m_closing.MayClose() || !m_dialog.IsLive()) return true;
    // The new one starts while this one is still there, for the user may refuse. It does not take this one
    // for a running copy: that search is for the title without its suffix. First, so that no quotation mark
    // of the old switches swallows it.
    const std::wstring arguments = L"/Float " + WithoutProgram(::GetCommandLineW());
    const auto started = CProcess::StartElevated(m_dialog, ProgramPath(), arguments);
    if (!m_dialog.IsLive()) return true;
    if (started) {
        m_dialog.End(IDCANCEL);
    } else {
        m_closing.OnStays();
    }
    return true;
}
