// The program's dialog in the bench's own process, hidden, worked as a user works it.
#pragma once

#include <filesystem>
#include <string>

#include "CorvaneKeys.h"
#include "PluginManagerDlg.h"
#include "RegKey.h"
#include "resource.h"

class CMainWindow {
  public:
    /// `folder` gets the layouts, and what the program keeps.
    explicit CMainWindow(const std::filesystem::path& folder) : m_dialog(CommandLineFor(folder), folder) {
        m_dialog.CreateModeless(nullptr);
        constexpr WPARAM kFirstFill = 1;
        m_dialog.Send(WM_TIMER, kFirstFill);
    }

    template <typename TView>
    TView& View() {
        return m_dialog.View<TView>();
    }
    CPluginListView& List() { return View<CPluginListView>(); }
    CTreeCtrlWrapper& Layout() { return View<CLayoutTreeView>().Layout(); }
    CListBox Plugins() { return List().Plugins(); }
    HWND Handle() const { return m_dialog.Handle(); }

    void Tell(int id, int code) const {
        m_dialog.Send(WM_COMMAND, MAKEWPARAM(id, code), reinterpret_cast<LPARAM>(m_dialog.Item(id).Handle()));
    }
    void Press(int id) const { Tell(id, BN_CLICKED); }
    void Choose(int category) const {
        m_dialog.Control<CListBox>(IDC_CATEGORIES).SetCurrentRow(category);
        Tell(IDC_CATEGORIES, LBN_SELCHANGE);
    }
    /// The first rows, and nothing else.
    void SelectFirst(int rows) {
        Plugins().SelectAll(false);
        Plugins().Send(LB_SELITEMRANGEEX, 0, rows - 1);
        Tell(IDC_PLUGINS, LBN_SELCHANGE);
    }
    /// What is selected in the tree is dropped on the first row in view.
    void DragToTop() {
        auto& view = View<CLayoutTreeView>();
        const CTreeCtrlEx& tree = view.Tree();
        NMTREEVIEWW begin{};
        begin.itemNew.hItem = tree.SelectedItems().front();
        view.OnBeginDrag(begin);
        POINT top{20, 2};
        ::MapWindowPoints(tree.Handle(), m_dialog.Handle(), &top, 1);
        view.OnButtonUp(top);
    }

  private:
    static CPluginManagerCmdLine CommandLineFor(const std::filesystem::path& folder) {
        CRegKey::Create(HKEY_CURRENT_USER, kManagerKey)->WriteString(L"MenuLayoutsPath", folder.wstring());
        return CPluginManagerCmdLine::Parse({});
    }
    CPluginManagerDlg m_dialog;
};
