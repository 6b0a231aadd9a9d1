#include "StudioSetView.h"

#include <algorithm>

#include "BackupQuestion.h"
#include "FileDialog.h"
#include "Files.h"
#include "HelpContext.h"
#include "MessageCaption.h"
#include "NumberText.h"
#include "PluginRecords.h"
#include "Resources.h"
#include "ReviewDlg.h"
#include "StudioSetFile.h"
#include "StudioSetRows.h"
#include "SystemErrorText.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

constexpr wchar_t kExtension[] = L"pgset";

FileDialogSettings DialogSettings(UINT titleId, DWORD flags) {
    FileDialogSettings settings;
    settings.title = LoadText(titleId);
    settings.defaultExtension = kExtension;
    settings.filterText = LoadText(IDS_SET_FILTER);
    settings.flags = OFN_HIDEREADONLY | flags;
    return settings;
}

std::wstring ReasonOf(const SetOutcome& outcome) {
    switch (outcome.result) {
        case SetResult::Malformed:
            return LoadText(IDS_SET_MALFORMED);
        case SetResult::Newer:
            return LoadText(IDS_SET_NEWER);
        case SetResult::Partly:
            return SystemErrorText(outcome.error) + L"\n\n" + LoadText(IDS_SET_PARTLY);
        default:
            return SystemErrorText(outcome.error) + L"\n\n" + LoadText(IDS_SET_UNCHANGED);
    }
}

}  // namespace

SetEvents CStudioSetView::EventsOf(CLongWork& work) const {
    return {.goOn = [&work] { return work.Next(); },
            .withoutBackup = [this](DWORD error) { return GoesOnWithoutBackup(m_dialog.Handle(), error); }};
}

bool CStudioSetView::Ask(const std::wstring& question) const {
    constexpr UINT kLook = MB_YESNO | MB_DEFBUTTON2 | MB_ICONWARNING;
    return ShowMessage(m_dialog.Handle(), question, kMessageCaption, kLook) == IDYES && m_dialog.IsLive();
}

/// What the user has ended needs no message.
void CStudioSetView::Report(const std::wstring& path, const SetOutcome& outcome) const {
    if (outcome.result <= SetResult::NothingToDo || outcome.result == SetResult::Ended || !m_dialog.IsLive())
        return;
    ShowMessage(m_dialog.Handle(), FileNameOf(path) + L"\n\n" + ReasonOf(outcome), kMessageCaption,
                MB_OK | MB_ICONEXCLAMATION);
}

/// A set holds the layouts as their files are.
bool CStudioSetView::MaySave() {
    m_tree.EndInput();
    const int answer = m_files.AskToSave(MB_YESNOCANCEL);
    // Still modified after a yes: the save failed, and the set would hold what was there before.
    return answer == IDNO || (answer == IDYES && !m_tree.Layout().IsModified());
}

bool CStudioSetView::Gather(SetToSave& save) {
    const CWaitCursor wait;
    CLongWork work(m_dialog, IDC_PRESETS_GROUP, 0, 0);
    return m_sets.Gather(save, true, EventsOf(work)).result == SetResult::Done && m_dialog.IsLive();
}

/// What the user has unticked is taken out. False when there is nothing to be saved.
bool CStudioSetView::Review(SetToSave& save) const {
    const std::wstring noFolder = m_sets.HasLayoutFolder() ? std::wstring() : LoadText(IDS_SET_NO_FOLDER);
    CReviewDlg review({.caption = LoadText(IDS_SAVE_SET_TITLE),
                       .heading = LoadText(IDS_SAVE_SET_HEADING),
                       .button = LoadText(IDS_SAVE_SET),
                       .help = kHelpOfSets},
                      StudioSetColumns(), RowsOf(save, noFolder));
    if (review.RunModal(m_dialog.Handle()) != IDOK || !m_dialog.IsLive()) return false;
    const std::vector<std::size_t> rows = review.Checked();
    const auto isTicked = [&](SavedRow row) {
        return std::ranges::find(rows, static_cast<std::size_t>(row)) != rows.end();
    };
    if (!isTicked(SavedRow::Names)) save.set.names.clear();
    if (!isTicked(SavedRow::Layouts)) save.set.layouts.clear();
    if (!isTicked(SavedRow::Presets)) save.presets.clear();
    return true;
}

void CStudioSetView::OnSave() {
    SetToSave save;
    if (!MaySave() || !m_dialog.IsLive() || !Gather(save) || !Review(save)) return;
    const auto path =
        CFileDialog(DialogSettings(IDS_SAVE_SET_TITLE, OFN_OVERWRITEPROMPT)).RunSave(m_dialog.Handle());
    if (!path || !m_dialog.IsLive()) return;
    // The system's dialog has asked about the set only.
    const std::wstring presets = PresetFileOf(*path);
    const bool removes = !CStudioSets::PresetsToRemove(save, *path).empty();
    const bool replaces = !save.presets.empty() && !IsThere(*path) && IsThere(presets);
    const UINT question = removes ? IDS_REMOVE_PRESETS_QUESTION : IDS_REPLACE_PRESETS_QUESTION;
    if ((removes || replaces) && !Ask(FormatText(LoadText(question), FileNameOf(presets)))) return;
    const SetOutcome outcome = [&] {
        const CWaitCursor wait;
        CLongWork work(m_dialog, IDC_PRESETS_GROUP, IDS_EXPORTING, save.CountPresets());
        return m_sets.Save(save, *path, FormatText(LoadText(IDS_STEP_REPLACE), FileNameOf(*path)),
                           EventsOf(work));
    }();
    Report(*path, outcome);
}

bool CStudioSetView::Plan(const std::wstring& path, SetToLoad& load) {
    const SetOutcome outcome = [&] {
        const CWaitCursor wait;
        CLongWork work(m_dialog, IDC_PRESETS_GROUP, 0, 0);
        return m_sets.Plan(path, SetMode::Add, true, load, EventsOf(work));
    }();
    Report(path, outcome);
    return outcome.result == SetResult::Done && m_dialog.IsLive();
}

/// False when the user would not have it loaded.
bool CStudioSetView::Review(const std::wstring& path, SetToLoad& load) const {
    std::vector<std::size_t> entries;
    const auto choose = [&](const CReviewDlg& review) {
        for (SetEntry& entry : load.entries) entry.chosen = false;
        for (const std::size_t row : review.Checked()) load.entries[entries[row]].chosen = true;
    };
    const auto makeSame = [&](CReviewDlg& review) {
        choose(review);
        for (SetEntry& entry : load.entries) entry.chosen |= entry.change == SetChange::Surplus;
        review.SetRows(RowsOf(load, entries));
    };
    std::vector<ReviewAction> actions;
    if (std::ranges::find(load.entries, SetChange::Surplus, &SetEntry::change) != load.entries.end())
        actions.push_back({LoadText(IDS_MAKE_SAME), makeSame, /*needsChecked*/ false});
    CReviewDlg review({.caption = LoadText(IDS_LOAD_SET_TITLE) + L": " + FileNameOf(path),
                       .heading = LoadText(IDS_LOAD_SET_HEADING),
                       .button = LoadText(IDS_LOAD_TICKED),
                       .help = kHelpOfSets},
                      StudioSetColumns(), RowsOf(load, entries), std::move(actions));
    if (review.RunModal(m_dialog.Handle()) != IDOK || !m_dialog.IsLive()) return false;
    choose(review);
    if (!load.IsTooMuch()) return true;
    const std::size_t after = ExclusionsAfter(load.entries, load.excluded.size());
    return Ask(FormatText(LoadText(IDS_SET_TOO_MANY), NumberText(after), NumberText(kMaxEntries)));
}

void CStudioSetView::OnLoad() {
    const auto path = CFileDialog(DialogSettings(IDS_LOAD_SET_TITLE, OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST))
                          .RunOpen(m_dialog.Handle());
    if (path && m_dialog.IsLive()) Load(*path);
}

void CStudioSetView::Load(const std::wstring& path) {
    SetToLoad load;
    if (!Plan(path, load) || !Review(path, load)) return;
    const SetOutcome outcome = [&] {
        const CWaitCursor wait;
        CLongWork work(m_dialog, IDC_PRESETS_GROUP, IDS_LOADING_SET, load.CountChosen());
        return m_sets.Load(load, FormatText(LoadText(IDS_STEP_LOAD_SET), FileNameOf(path)), m_dialog,
                           EventsOf(work));
    }();
    // Also when it was put back: the inventory has had other names in between.
    if (m_dialog.IsLive()) m_loaded();
    Report(path, outcome);
}
