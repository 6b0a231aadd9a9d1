// What is kept of a layout that is not saved, and what a start makes of it.
#include "Autosave.h"
#include "layouts/LayoutTreeDialog.h"

namespace {

constexpr wchar_t kFolder[] = L"data";
constexpr wchar_t kCopy[] = L"data\\unsaved.pgl";
constexpr wchar_t kSecond[] = L"data\\unsaved (2).pgl";
constexpr wchar_t kLock[] = L"data\\unsaved.lock";

class Autosave : public support::LayoutTreeDialog {
  protected:
    bool Has(const wchar_t* file) const { return std::filesystem::exists(m_files.Path(file)); }
    void PassMinute() const { m_dialog->Send(WM_TIMER, 2); }
    /// As a crash does: nothing is asked or told.
    void Crash() { m_dialog.reset(); }
};

TEST_F(Autosave, ACopyIsThereWhileTheLayoutHasChanges) {
    Open();
    PassMinute();
    EXPECT_FALSE(Has(kFolder)) << "nothing was changed";
    Build(L"a,\x01(b)");
    EXPECT_FALSE(Has(kCopy));
    PassMinute();
    EXPECT_NE(m_files.Read(kCopy).find("\xEF\xBF\xBD"), std::string::npos) << "what XML can't hold";
    EXPECT_TRUE(Has(kLock));
    std::filesystem::remove(m_files.Path(kCopy));
    PassMinute();
    EXPECT_FALSE(Has(kCopy)) << "nothing more was changed";
    Layout().Append(nullptr, NewSeparator());
    PassMinute();
    EXPECT_TRUE(Has(kCopy));
    {
        CDialog other(IDD_REVIEW);
        CAutosave second(other, m_files.Path(kFolder), [this](const std::wstring& path) {
            return std::filesystem::copy_file(m_files.Path(kCopy), path);
        });
        EXPECT_EQ(second.TakeLeft(), std::nullopt) << "its program runs";
        second.OnModified(true);
        second.OnTimer(2);
        EXPECT_TRUE(Has(kSecond));
        second.OnModified(false);
        EXPECT_FALSE(Has(kSecond));
    }
    m_popups.Expect(L"Save changes", IDNO);
    Press(IDC_LAYOUT_NEW);
    EXPECT_FALSE(Has(kCopy) || Has(kLock)) << "dropped";
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
    const std::filesystem::directory_iterator backups(m_files.Path(kFolder) + L"\\Backups");
    EXPECT_TRUE(backups->path().filename().wstring().ends_with(L" unsaved.pgl"));
    Crash();
    std::filesystem::remove_all(m_files.Path(L"data\\Backups"));
    m_files.Write(kCopy, "no layout");
    Open();
    EXPECT_FALSE(Has(kCopy)) << "put by without a question";
}

}  // namespace
