// What is kept of a layout that is not saved, and what a start makes of it.
#include <fstream>

#include "Autosave.h"
#include "Backups.h"
#include "layouts/LayoutTreeDialog.h"

namespace {

constexpr wchar_t kCopy[] = L"unsaved.pgl";
constexpr wchar_t kSecond[] = L"unsaved (2).pgl";
constexpr wchar_t kLock[] = L"unsaved.lock";

class Autosave : public support::LayoutTreeDialog {
  protected:
    bool Has(const wchar_t* file) const { return std::filesystem::exists(m_data / file); }
    CBackups Backups() const { return {BackupFolder(m_data.wstring()), L"1"}; }
    void PassMinute() const { m_dialog->Send(WM_TIMER, 2); }
    /// As a crash does: nothing is asked or told.
    void Crash() { m_dialog.reset(); }
};

TEST_F(Autosave, ACopyIsThereWhileTheLayoutHasChanges) {
    Open();
    PassMinute();
    EXPECT_FALSE(Has(L".")) << "nothing was changed";
    Build(L"a,\x01(b)");
    Layout().SetModified(true);
    EXPECT_FALSE(Has(kCopy));
    PassMinute();
    EXPECT_NE(m_files.Read(m_data / kCopy).find("\xEF\xBF\xBD"), std::string::npos) << "what XML can't hold";
    EXPECT_TRUE(Has(kLock));
    std::filesystem::remove(m_data / kCopy);
    PassMinute();
    EXPECT_FALSE(Has(kCopy)) << "nothing more was changed";
    Layout().Append(nullptr, NewSeparator());
    PassMinute();
    EXPECT_TRUE(Has(kCopy));
    {
        CDialog other(IDD_REVIEW);
        CAutosave second(other, m_data.wstring(), [this](const std::wstring& path) {
            return std::filesystem::copy_file(m_data / kCopy, path);
        });
        EXPECT_EQ(second.TakeLeft(), std::nullopt) << "its program runs";
        second.OnModified(true);
        second.OnTimer(2);
        EXPECT_TRUE(Has(kSecond));
        second.OnModified(false);
        EXPECT_FALSE(Has(kSecond));
    }
    Item(IDC_LAYOUTS).SetText(L"\x02");
    m_popups.Expect(L"Save changes", IDNO);
    Press(IDC_LAYOUT_NEW);
    EXPECT_FALSE(Has(kCopy) || Has(kLock)) << "dropped";
    EXPECT_EQ(Backups().List().at(0).record.step, L"Unsaved layout \xFFFD");
}

TEST_F(Autosave, WhatACrashLeavesIsOfferedOnce) {
    const auto file = m_files.Write(
        L"one.pgl", "<PluginMenuLayout DocSchema='1' Name='One'><Folder Name='F'/></PluginMenuLayout>");
    Open({file});
    Layout().Append(nullptr, NewSeparator());
    Item(IDC_LAYOUTS).SetText(L"Renamed");
    PassMinute();
    Crash();
    EXPECT_TRUE(Has(kCopy));
    m_popups.Expect(L"changes of the menu layout \"Renamed\"", IDYES);
    Open({file});
    EXPECT_EQ(Tree().Count(), 2);
    EXPECT_TRUE(Layout().IsModified());
    EXPECT_EQ(Text(IDC_LAYOUTS) + L"|" + Text(IDC_LAYOUT_FILE), L"Renamed|one.pgl");
    EXPECT_TRUE(IsEnabled(IDC_LAYOUT_DELETE));
    Crash();
    EXPECT_TRUE(Has(kCopy)) << "until it is saved";
    m_popups.Expect(L"changes of the menu layout", IDNO);
    Open();
    EXPECT_FALSE(Layout().IsModified() || Has(kCopy));
    const auto backups = Backups().List();
    ASSERT_EQ(backups.size(), 1U);
    EXPECT_EQ(backups[0].record.step, L"Unsaved layout Renamed");
    Crash();
    std::ofstream(m_data / kCopy) << "no layout";
    Open();
    EXPECT_FALSE(Has(kCopy)) << "put by without a question";
    EXPECT_EQ(Backups().List().size(), 2U);
}

}  // namespace
