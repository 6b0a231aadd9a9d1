#include "PluginManagerDlg.h"

#include <utility>

#include "AboutDlg.h"
#include "DialogHelp.h"
#include "HelpTopics.h"
#include "ProgramPath.h"
#include "Resources.h"
#include "Version.h"
#include "resource.h"

namespace {

// A command of the system menu; the system keeps the low four bits.
constexpr UINT kCommandAbout = 0x10;

constexpr UINT_PTR kFirstFillTimer = 1;
constexpr UINT kFirstFillDelay = 500;  // ms

VstKey VstKeyOf(const CPluginManagerCmdLine& cmdLine) {
    const bool given = !cmdLine.vstInventoryKey.empty();
    return {.path = given ? cmdLine.vstInventoryKey : kDefaultVstKey, .given = given};
}

}  // namespace

CPluginManagerDlg::CPluginManagerDlg(CPluginManagerCmdLine cmdLine, const std::wstring& dataFolder)
    : CDialog(IDD_PLUGIN_MANAGER),
      m_cmdLine(std::move(cmdLine)),
      m_host(reinterpret_cast<HWND>(m_cmdLine.parentWnd)),
      m_docking(*this, m_host, m_cmdLine.floating),
      m_size(*this, [this](UINT dpi) { LoadImages(dpi); }),
      m_vstKey(VstKeyOf(m_cmdLine)),
      m_settings(LoadManagerSettings(m_cmdLine.registerOnly, m_host.Handle())),
      m_backups(BackupFolder(dataFolder), kProductVersion),
      m_inventory(m_vstKey.path, m_database),
      m_list(*this, m_inventory, m_exclusions, m_visibility, m_tools),
      m_exclusion(*this, m_exclusions, m_inventory, m_list, m_host, m_backups, m_visibility),
      m_names(*this, m_list, m_friendlyNames),
      m_vstTools(*this, m_inventory, m_list, m_host, m_tools, m_vstKey),
      m_tree(*this, m_inventory, m_list),
      m_find(*this, m_list, m_tree),
      m_files(*this, m_tree, m_inventory, m_host, m_backups, dataFolder, m_settings.layoutFolder,
              kManagerKey),
      m_toolbar(*this),
      m_studioSets(*this, CStudioSets(m_inventory, m_friendlyNames, m_backups, m_settings.layoutFolder),
                   m_tree, m_files, [this] { m_backupList.ReadAllAgain(); }) {
    if (m_cmdLine.useDatabase && !m_cmdLine.registerOnly) {
        m_database.Open(ProgramFolder() + L"\\Database\\VrnDatabase.dll");
    }
}

CPluginManagerDlg::~CPluginManagerDlg() { ForgetParentWindow(); }

std::span<const CRoute> CPluginManagerDlg::Routes() const {
    using Frame = CPluginManagerDlg;
    using List = CPluginListView;
    using Exclusion = CExclusionView;
    using Names = CFriendlyNameView;
    using VstTools = CVstToolsView;
    using Tree = CLayoutTreeView;
    using Files = CLayoutFilesView;
    using Tasks = CTasksMenu;
    using R = CRoutesOf<CPluginManagerDlg>;
    static constexpr CRoute kRoutes[] = {
        R::OnMessage<WM_SYSCOMMAND, &Frame::OnSysCommand>(),
        R::OnMessage<WM_SYSCOMMAND, &CDocking::OnSysCommand>(),
        R::OnMessage<WM_SYSCOMMAND, &CElevation::OnSysCommand>(),
        R::OnMessage<WM_SYSCHAR, &CDocking::OnSysChar>(),
        R::OnMessage<WM_CONTEXTMENU, &CPluginMenu::OnContextMenu>(),
        R::OnMessage<WM_CONTEXTMENU, &CDocking::OnContextMenu>(),
        R::OnMessage<WM_PAINT, &Frame::OnPaint>(),
        R::OnMessage<WM_QUERYDRAGICON, &Frame::OnQueryDragIcon>(),
        R::OnMessage<WM_DESTROY, &Frame::OnDestroy>(),
        R::OnMessage<WM_VKEYTOITEM, &CDialogKeys::OnVKeyToItem>(),
        R::OnMessage<WM_QUERYENDSESSION, &CClosing::OnQueryEndSession>(),
        R::OnMessage<WM_ENDSESSION, &CClosing::OnEndSession>(),
        R::OnMessage<WM_SYSCOLORCHANGE, &Frame::OnColoursChanged>(),
        R::OnMessage<WM_THEMECHANGED, &Frame::OnColoursChanged>(),
        R::OnMessage<WM_SETTINGCHANGE, &Frame::OnColoursChanged>(),
        R::OnMessage<WM_TIMER, &Frame::OnTimer>(),
        R::OnMessage<WM_DROPFILES, &CFileDrop::OnDrop>(),
        R::OnCommand<BN_CLICKED, &Frame::OnHelp>(IDC_HELP_BUTTON),

        R::OnMessage<WM_SIZE, &CDialogSize::OnSize>(),
        R::OnMessage<WM_SIZING, &CDialogSize::OnSizing>(),
        R::OnMessage<WM_GETDPISCALEDSIZE, &CDialogSize::OnScaledSize>(),
        R::OnMessage<WM_DPICHANGED, &CDialogSize::OnDpiChanged>(),
        R::OnMessage<WM_DPICHANGED_AFTERPARENT, &CDialogSize::OnParentScaled>(),

        R::OnCommand<LBN_SELCHANGE, &List::RefreshPluginList>(IDC_CATEGORIES),
        R::OnCommand<LBN_SELCHANGE, &List::OnSelectionChanged>(IDC_PLUGINS),
        R::OnCommand<LBN_DBLCLK, &Names::OnRename>(IDC_PLUGINS),
        R::OnCommand<BN_CLICKED, &Names::OnRename>(ID_RENAME_PLUGIN),
        R::OnCommand<BN_CLICKED, &CPluginMenu::OnSelectAll>(ID_SELECT_ALL),
        R::OnCommand<BN_CLICKED, &CPluginMenu::OnSelectNew>(ID_SELECT_NEW),
        R::OnCommand<BN_CLICKED, &CPluginMenu::OnCopy>(ID_COPY_PLUGINS),
        R::OnCommand<BN_CLICKED, &CPluginMenu::OnFileLocation>(ID_FILE_LOCATION),

        R::OnCommand<EN_CHANGE, &CFindField::OnChange>(IDC_FIND),
        R::OnCommand<EN_KILLFOCUS, &CFindField::OnLeft>(IDC_FIND),
        R::OnCommand<BN_CLICKED, &CFindField::OnFind>(ID_FIND),
        R::OnCommand<BN_CLICKED, &CFindField::OnFindNext>(ID_FIND_NEXT),
        R::OnCommand<BN_CLICKED, &CFindField::OnFindPrevious>(ID_FIND_PREVIOUS),

        R::OnCommand<BN_CLICKED, &Exclusion::OnShowEnabled>(IDC_SHOW_ENABLED),
        R::OnCommand<BN_CLICKED, &Exclusion::OnShowExcluded>(IDC_SHOW_EXCLUDED),
        R::OnCommand<BN_CLICKED, &Exclusion::OnShowPermanent>(IDC_SHOW_PERMANENT),
        R::OnCommand<BN_CLICKED, &Frame::OnExclude>(IDC_EXCLUDE),

        R::OnCommand<BN_CLICKED, &Frame::OnImportPresets>(IDC_IMPORT),
        R::OnCommand<BN_CLICKED, &Frame::OnExportPresets>(IDC_EXPORT),
        R::OnCommand<BN_CLICKED, &Frame::OnManagePresets>(IDC_MANAGE),

        R::OnCommand<BN_CLICKED, &VstTools::OnOptions>(IDC_VST_OPTIONS),
        R::OnCommand<BN_CLICKED, &VstTools::OnPluginProperties>(IDC_VST_PROPERTIES),
        R::OnCommand<BN_CLICKED, &VstTools::OnScan>(IDC_VST_SCAN),
        R::OnCommand<BN_CLICKED, &VstTools::OnAdapterWizard>(IDC_ADAPTER_WIZARD),
        R::OnCommand<BN_CLICKED, &VstTools::OnAdapterProperties>(IDC_ADAPTER_PROPERTIES),

        R::OnCommand<BN_CLICKED, &Tree::OnAddPlugin>(IDC_ADD_PLUGIN),
        R::OnCommand<BN_CLICKED, &Tree::OnNewFolder>(IDC_NEW_FOLDER),
        R::OnCommand<BN_CLICKED, &Tree::OnAddSeparator>(IDC_ADD_SEPARATOR),
        R::OnCommand<BN_CLICKED, &Tree::OnExpandAll>(IDC_EXPAND_ALL),
        R::OnCommand<BN_CLICKED, &Tree::OnCollapseAll>(IDC_COLLAPSE_ALL),
        R::OnCommand<BN_CLICKED, &Tree::OnSortAll>(IDC_SORT_ALL),
        R::OnCommand<BN_CLICKED, &Tree::OnRemove>(IDC_REMOVE),
        R::OnCommand<BN_CLICKED, &Tree::OnMoveUp>(IDC_MOVE_UP),
        R::OnCommand<BN_CLICKED, &Tree::OnMoveDown>(IDC_MOVE_DOWN),
        R::OnCommand<BN_CLICKED, &Tree::OnPromote>(IDC_PROMOTE),

        R::OnCommand<BN_CLICKED, &Tasks::Drop>(IDC_TASKS),
        R::OnCommand<BN_CLICKED, &Tree::OnUndo>(ID_UNDO),
        R::OnCommand<BN_CLICKED, &Tree::OnRedo>(ID_REDO),
        R::OnCommand<BN_CLICKED, &Tree::OnCut>(ID_CUT),
        R::OnCommand<BN_CLICKED, &Tree::OnCopy>(ID_COPY),
        R::OnCommand<BN_CLICKED, &Tree::OnPaste>(ID_PASTE),
        R::OnCommand<BN_CLICKED, &CLayoutFill::OnByVendor>(ID_FILL_BY_VENDOR),
        R::OnCommand<BN_CLICKED, &CLayoutFill::OnByCategory>(ID_FILL_BY_CATEGORY),
        R::OnCommand<BN_CLICKED, &CLayoutFill::OnByBoth>(ID_FILL_BY_BOTH),
        R::OnCommand<BN_CLICKED, &CTidyUp::OnTidyUp>(ID_TIDY_UP),
        R::OnCommand<BN_CLICKED, &CStudioSetView::OnSave>(ID_SAVE_STUDIO_SET),
        R::OnCommand<BN_CLICKED, &CStudioSetView::OnLoad>(ID_LOAD_STUDIO_SET),
        R::OnCommand<BN_CLICKED, &CBackupsView::OnBackups>(ID_BACKUPS),

        R::OnCommand<BN_CLICKED, &Files::OnNew>(IDC_LAYOUT_NEW),
        R::OnCommand<BN_CLICKED, &Files::OnOpen>(IDC_LAYOUT_OPEN),
        R::OnCommand<BN_CLICKED, &Files::OnSave>(IDC_LAYOUT_SAVE),
        R::OnCommand<BN_CLICKED, &Files::OnSaveInPlace>(ID_SAVE_LAYOUT),
        R::OnCommand<BN_CLICKED, &Files::OnDelete>(IDC_LAYOUT_DELETE),
        R::OnCommand<CBN_SELCHANGE, &Files::OnListChange>(IDC_LAYOUTS),
        R::OnCommand<CBN_SELENDOK, &Files::OnListChosen>(IDC_LAYOUTS),
        R::OnCommand<CBN_SELENDCANCEL, &Files::OnListLeft>(IDC_LAYOUTS),
        R::OnCommand<CBN_EDITCHANGE, &Files::OnEditName>(IDC_LAYOUTS),
        R::OnMessage<WM_DRAWITEM, &CLayoutToolbar::OnDrawItem>(),
        R::OnNotify<TTN_GETDISPINFOW, &CLayoutToolbar::OnNeedTipText>(),
        R::OnMessage<crackers::kDeferred, &Files::OnDeferred>(),

        R::OnMessage<WM_MOUSEMOVE, &Tree::OnMouseMove>(),
        R::OnMessage<WM_LBUTTONUP, &Tree::OnButtonUp>(),
        R::OnMessage<WM_RBUTTONDOWN, &Tree::CancelDrag>(),
        R::OnMessage<WM_CAPTURECHANGED, &Tree::OnCaptureChanged>(),
        R::OnNotify<NM_RCLICK, &Tree::OnRightClick>(IDC_LAYOUT_TREE),
        R::OnNotify<NM_DBLCLK, &Tree::OnDoubleClick>(IDC_LAYOUT_TREE),
        R::OnNotify<TVN_SELCHANGEDW, &Tree::OnSelectionChanged>(IDC_LAYOUT_TREE),
        R::OnNotify<TVN_ITEMEXPANDEDW, &Tree::OnItemExpanded>(IDC_LAYOUT_TREE),
        R::OnNotify<TVN_BEGINLABELEDITW, &Tree::OnBeginLabelEdit>(IDC_LAYOUT_TREE),
        R::OnNotify<TVN_ENDLABELEDITW, &Tree::OnEndLabelEdit>(IDC_LAYOUT_TREE),
        R::OnNotify<TVN_DELETEITEMW, &Tree::OnDeleteItem>(IDC_LAYOUT_TREE),
        R::OnNotify<TVN_KEYDOWN, &Tree::OnKeyDown>(IDC_LAYOUT_TREE),
        R::OnNotify<TVN_BEGINDRAGW, &Tree::OnBeginDrag>(IDC_LAYOUT_TREE),
        R::OnNotify<NM_CUSTOMDRAW, &Tree::OnCustomDraw>(IDC_LAYOUT_TREE),
        R::OnNotify<NM_CLICK, &Frame::OnAnyClick>(),
    };
    return kRoutes;
}

bool CPluginManagerDlg::OnInitDialog() {
    if (m_cmdLine.registerOnly) {
        End(0);
        return false;
    }
    const CWaitCursor wait;
    SetText(LoadText(IDS_TITLE) + L" x64");
    AddAboutCommand();
    m_elevation.OnInitDialog();
    m_docking.OnInitDialog();
    m_size.OnInitDialog();
    SetIcons();
    m_tools = VstToolPaths::Read(m_vstKey.path);

    m_tree.OnInitDialog();
    m_toolbar.OnInitDialog();
    m_files.OnInitDialog();
    m_list.OnInitDialog();
    m_find.OnInitDialog();
    m_list.WhenEnumerated([this] { m_files.MarkInstalled(); });
    Item(IDC_ADD_PLUGIN).Enable(false);
    m_tree.UpdateButtons();
    m_exclusion.OnInitDialog();
    m_fileDrop.OnInitDialog();

    SetHelpNumbers();
    m_size.FitScreen();
    m_docking.Start();
    m_size.PlaceAsBefore();
    ::SetTimer(m_hwnd, kFirstFillTimer, kFirstFillDelay, nullptr);
    return true;
}

void CPluginManagerDlg::AddAboutCommand() const {
    const std::wstring text = LoadText(IDS_ABOUT_COMMAND);
    if (text.empty()) return;
    const HMENU menu = ::GetSystemMenu(m_hwnd, FALSE);
    ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    ::AppendMenuW(menu, MF_STRING, kCommandAbout, text.c_str());
}

void CPluginManagerDlg::LoadImages(UINT dpi) {
    m_toolbar.LoadImages(dpi);
    m_tree.LoadImages(dpi);
    SetIcons();
}

/// By the scale of the frame that shows them.
void CPluginManagerDlg::SetIcons() {
    const UINT dpi = m_size.ScreenDpi();
    const auto load = [dpi](int width, int height) {
        return LoadIconResource(IDI_PLUGIN_MANAGER, ::GetSystemMetricsForDpi(width, dpi),
                                ::GetSystemMetricsForDpi(height, dpi));
    };
    UniqueIcon icon = load(SM_CXICON, SM_CYICON);
    UniqueIcon smallIcon = load(SM_CXSMICON, SM_CYSMICON);
    Send(WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(icon.Get()));
    Send(WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon.Get()));
    // The old ones go when the window has the new ones.
    m_icon = std::move(icon);
    m_smallIcon = std::move(smallIcon);
}

void CPluginManagerDlg::SetHelpNumbers() const {
    for (const HelpTopic& topic : ControlTopics()) {
        ::SetWindowContextHelpId(Item(static_cast<int>(topic.id)).Handle(), HelpOfControl(topic.id));
    }
}

void CPluginManagerDlg::OnTimer(UINT_PTR timer) {
    if (m_files.OnTimer(timer) || timer != kFirstFillTimer) return;
    ::KillTimer(m_hwnd, kFirstFillTimer);
    FirstFill();
}

void CPluginManagerDlg::FirstFill() {
    m_exclusions.Load();
    m_list.EnumeratePlugins();
    m_list.Refill();
    m_files.ListLayouts();
    const std::wstring& file = m_cmdLine.fileParam;
    // A layout that was saved from a crash must not be lost to another one.
    if (!m_files.OfferUnsaved() && !file.empty() && IsLive()) m_files.Open(file);
    // Not before there is something that they could be compared with.
    if (IsLive()) m_fileDrop.Accept();
}

bool CPluginManagerDlg::OnSysCommand(UINT command) {
    if (command != kCommandAbout) return false;
    CAboutDlg().RunModal(m_hwnd);
    return true;
}

bool CPluginManagerDlg::OnPaint() {
    if (!::IsIconic(m_hwnd)) return false;
    PAINTSTRUCT paint;
    const HDC dc = ::BeginPaint(m_hwnd, &paint);
    const Rect client = ClientRect();
    Send(WM_ICONERASEBKGND, reinterpret_cast<WPARAM>(dc));
    ::DrawIcon(dc, (client.Width() - ::GetSystemMetrics(SM_CXICON) + 1) / 2,
               (client.Height() - ::GetSystemMetrics(SM_CYICON) + 1) / 2, m_icon.Get());
    ::EndPaint(m_hwnd, &paint);
    return true;
}

void CPluginManagerDlg::OnColoursChanged() {
    m_tree.OnColoursChanged();
    ::RedrawWindow(m_hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

bool CPluginManagerDlg::PreTranslate(const MSG& message) {
    m_size.FollowHost();
    return m_docking.OnKey(message) || m_files.IsWheelOverList(message) || m_tasks.OnKey(message) ||
           m_keys.OnKey(message);
}

void CPluginManagerDlg::OnHelp() const { ShowHelpOn(m_hwnd); }

void CPluginManagerDlg::OnExclude() {
    m_tree.CancelDrag();
    m_exclusion.OnExclude();
}

void CPluginManagerDlg::OnImportPresets() {
    m_presets.Import(m_list.SelectedPlugins());
    m_list.OnSelectionChanged();
}

void CPluginManagerDlg::OnExportPresets() { m_presets.Export(m_list.SelectedPlugins()); }

void CPluginManagerDlg::OnManagePresets() {
    const auto plugin = m_list.CaretPlugin();
    if (!plugin) return;
    m_presets.Manage(*plugin);
    m_list.OnSelectionChanged();
}

void CPluginManagerDlg::OnOK() {
    // Enter anywhere else than on the Close button must not close the dialog.
    if (!Item(IDC_CLOSE).HasFocus()) return;
    if (!m_closing.MayClose()) return;
    // Kept: closing with OK does to the selected plug-ins what the Exclude or Enable button would do.
    if (Item(IDC_EXCLUDE).IsEnabled()) m_exclusion.TogglePluginExclusion();
    m_host.Tell(kLayoutsChanged);
    End(IDOK);
}

void CPluginManagerDlg::OnCancel() {
    if (m_closing.MayClose()) End(IDCANCEL);
}

void CPluginManagerDlg::OnDestroy() {
    if (m_cmdLine.registerOnly) return;
    m_closing.OnDestroy();
    m_find.OnDestroy();
    m_list.OnDestroy();
    m_tree.OnDestroy();
}
