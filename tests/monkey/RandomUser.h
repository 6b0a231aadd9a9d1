// A user who does anything to the main dialog at random, and what has to be so whatever that was.
#pragma once

#include <map>
#include <random>
#include <set>
#include <unordered_set>

#include "layouts/LayoutTreeDialog.h"
#include "support/Holdings.h"
#include "support/StandInHost.h"

/// Each step has random numbers of its own, made of the seed and its number, so that a walk is the same again
/// whatever steps are left out. It tells each step on the output.
class RandomUser : public support::LayoutTreeDialog {
  protected:
    /// A studio with plug-ins of every category, with layouts, presets, and files that are none.
    void SetUp() override;
    void TearDown() override;
    /// Does one of the actions.
    void Step(unsigned seed, int number);
    /// Each is checked after every so many steps; fails the test when it does not hold. With 0, all.
    void Check(int number);
    /// Ends the program, and compares what it leaves with what it left before.
    void CheckHoldings();

  private:
    struct Action {
        unsigned weight;
        const char* name;
        void (RandomUser::*run)();
        bool edits = false;  // the layout, in one step at most
    };
    static const Action kActions[];
    struct Invariant {
        const char* what;
        int every;  // steps
        std::wstring (RandomUser::*wrong)();
    };
    static const Invariant kInvariants[];
    using State = std::map<std::wstring, std::wstring>;

    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : m_random() % limit; }
    bool OneIn(std::size_t chances) { return Below(chances) == 0; }
    template <typename TAll>
    const auto& Any(const TAll& all) {
        return std::data(all)[Below(std::size(all))];
    }
    std::wstring AnyText();
    std::wstring AnyFile();
    POINT AnyPlace();

    void Start();
    /// What can be worked by hand now.
    static std::vector<HWND> Controls(HWND dialog);
    static bool IsPushButton(HWND control);
    void Work(HWND control);
    void WorkFileDialog(HWND dialog);
    /// A dialog is in front.
    void Answer(HWND dialog);
    static void CALLBACK OnMenu(HWND, UINT, UINT_PTR, DWORD);
    /// A key where the keyboard is, with one that is held.
    void PressKey(HWND window, WORD key, BYTE held = 0);

    void PressButton();
    void SelectPlugins();
    void ChooseCategory();
    void PressListKey();
    void Find();
    void ClickItem();
    void PressTreeKey();
    void EditLabel();
    void Drag();
    void ChooseCommand();
    void OpenMenu();
    void TravelSteps();
    void PickLayout();
    void TypeLayoutName();
    void PressAnyKey();
    void DropFiles();
    void Resize();
    void Rescale();
    void ChangeColours();
    void PassTime();
    void Float();
    void Close();
    void EndSession();
    void Crash();
    void CloseHost();

    /// The layout without what is open and selected.
    static std::wstring ItemsOf(const CTreeCtrlWrapper& layout);
    std::wstring Items() { return ItemsOf(Layout()); }
    void ExpectOneStep(const std::wstring& before);

    std::wstring WrongRecords();
    std::wstring WrongLayoutButtons();
    std::wstring WrongWindows();
    std::wstring WrongRows();
    std::wstring WrongCaptions();
    std::wstring WrongPaneButtons();
    std::wstring WrongLayoutFile();
    std::wstring WrongKeys();
    std::wstring WrongFiles();
    static State Registry();
    std::set<std::wstring> Elsewhere() const;

    std::mt19937 m_random;
    std::optional<support::StandInHost> m_host;
    HWND m_inFront = nullptr;
    int m_looks = 0;
    std::unordered_set<LayoutItemId> m_ids;  // of the step before
    State m_registry;                        // at the start
    std::set<std::wstring> m_elsewhere;      // files at the start
    std::map<int, std::wstring> m_captions;
    std::optional<support::Holdings> m_holdings;
    std::vector<UniqueFile> m_held;
    /// The current folder, where nothing has to be.
    const std::filesystem::path m_current = m_files.Folder().wstring() + L" current";
    UINT_PTR m_menuTimer = 0;
};
