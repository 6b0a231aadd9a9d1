#include "VstToolsView.h"

#include <algorithm>
#include <utility>

#include "ClsidText.h"
#include "FriendlyNames.h"
#include "Process.h"
#include "RegKey.h"
#include "Resources.h"
#include "Scope.h"
#include "TextFormat.h"

namespace {

bool IsFile(const std::wstring& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace

CVstToolsView::CVstToolsView(CDialog& dialog, const CPluginInventory& inventory, CPluginListView& list,
                             const CHostWindow& host, const VstToolPaths& paths, VstKey key)
    : m_dialog(dialog),
      m_inventory(inventory),
      m_list(list),
      m_host(host),
      m_paths(paths),
      m_key(std::move(key)) {}

void CVstToolsView::LaunchVstTool(const VstToolAction& action) {
    const bool scanner = action.program == VstProgram::Scanner;
    const std::wstring& program = scanner ? m_paths.scanner : m_paths.adapterProgram;
    const auto clsid = action.namesPlugin ? CurrentPlugin() : std::wstring();
    if (program.empty() || !clsid || std::ranges::any_of(ProgramsOnTheWay(program), IsFile)) return;

    const std::uint64_t before = LastUpdateTime();
    const CWindow group = m_dialog.Item(scanner ? IDC_VST_GROUP : IDC_ADAPTER_GROUP);
    if (!RunTool(program, ArgumentsOf(action, *clsid, m_key), group) || !action.refreshes) return;
    if (!scanner || LastUpdateTime() > before) RefreshPlugins();
}

bool CVstToolsView::RunTool(const std::wstring& program, const std::wstring& arguments,
                            const CWindow& group) const {
    {
        const CFocusKeeper focus;
        const auto process = CProcess::Start(m_dialog, program, arguments);
        if (!process || !m_dialog.IsLive()) return false;
        const std::wstring caption = group.Text();
        const CScopeExit restore([&] {
            group.SetText(caption);
            m_dialog.Enable();
        });
        m_dialog.Enable(false);
        group.SetText(FormatText(LoadText(IDS_TOOL_RUNNING), caption));
        if (!process->WaitDispatching(m_dialog)) return false;
    }
    BringToFront();
    return true;
}

void CVstToolsView::BringToFront() const {
    constexpr UINT kInPlace = SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW;
    constexpr DWORD kMoment = 100;  // ms; the program's last window is still on its way out
    ::SetWindowPos(m_dialog.Handle(), HWND_TOPMOST, 0, 0, 0, 0, kInPlace);
    ::Sleep(kMoment);
    ::SetWindowPos(m_dialog.Handle(), HWND_NOTOPMOST, 0, 0, 0, 0, kInPlace);
}

void CVstToolsView::RefreshPlugins() {
    const CWaitCursor wait;
    const CWindow focus(::GetFocus());
    CFriendlyNames::CorrectWrapped(m_inventory);
    if (m_list.SelectedCategory()) {
        const auto rows = CRememberedRows::Of(m_list.Plugins());
        m_list.EnumeratePlugins();
        m_list.Refill(rows);
        // A button that was disabled for a moment has given the focus away.
        if (focus.IsEnabled()) focus.Focus();
    }
    m_host.Tell(kPluginsChanged);
}

std::optional<std::wstring> CVstToolsView::CurrentPlugin() const {
    const auto row = m_list.CaretRow();
    return row ? std::optional(ClsidText(row->item.clsid)) : std::nullopt;
}

std::uint64_t CVstToolsView::LastUpdateTime() const {
    const auto inventory = CRegKey::Open(HKEY_CURRENT_USER, m_key.path + L"\\Inventory");
    return inventory ? inventory->ReadTime(L"lastUpdateTime").value_or(0) : 0;
}
