// A list of things that a command could do something to: the user ticks those that are meant.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Dialog.h"

/// Of rows: by the words in this column, or by the numbers behind them, as for a time; with those that are
/// read as numbers the words stand to the right.
enum class ReviewOrder { ByText, ByKey, ByKeyRight };

struct ReviewColumn {
    std::wstring title;
    ReviewOrder order = ReviewOrder::ByText;
};

struct ReviewCell {
    std::wstring text;
    std::int64_t key = 0;
};

struct ReviewRow {
    std::vector<ReviewCell> cells;  // one a column
    bool checked = false;
    bool canBeChecked = true;  // else it is there to be read, and has no box
};

class CReviewDlg;

/// A button more, at the lower left. What it does may change the rows; the dialog stays open.
struct ReviewAction {
    std::wstring text;
    std::function<void(CReviewDlg& dialog)> run;
    bool needsChecked = true;  // else it needs the row that the keyboard is on
};

struct ReviewTexts {
    std::wstring caption;
    std::wstring heading;
    /// "%d" stands for the number of rows that are ticked; with none the button can't be pressed.
    std::wstring button;
    std::wstring close{};  // of the other button; empty means "Cancel"
    unsigned help = 0;     // the number of a page of its own
};

/// RunModal gives IDOK when the button was pressed; Checked then says for what. A click on a column's title
/// sorts by it, a second one the other way round. Ctrl+A ticks all rows, or none when all are. It opens as
/// wide as its texts want, where the screen has room.
class CReviewDlg : public CDialog {
  public:
    static constexpr std::size_t kMostActions = 2;

    CReviewDlg(ReviewTexts texts, std::vector<ReviewColumn> columns, std::vector<ReviewRow> rows,
               std::vector<ReviewAction> actions = {});

    /// The rows that are ticked, as they were given, in ascending order.
    std::vector<std::size_t> Checked() const;
    /// The row that the keyboard is on.
    std::optional<std::size_t> Current() const;
    /// For an action, or before the dialog is shown.
    void SetRows(std::vector<ReviewRow> rows);
    /// Without it the rows stand in the order of the first column.
    void SortBy(int column, bool descending);

  private:
    std::span<const CRoute> Routes() const override;
    bool OnInitDialog() override;
    void OnOK() override;
    bool PreTranslate(const MSG& message) override;
    void OnColumn(const NMLISTVIEW& click);
    bool OnItemChanging(const NMLISTVIEW& item) const;
    void OnItemChanged(const NMLISTVIEW& item);
    void OnAction() { Run(0); }
    void OnSecondAction() { Run(1); }
    void OnSize(Size client);
    void OnSmallest(MINMAXINFO& sizes) const;

    Rect ScreenArea() const;
    void FitScreen();
    void AddColumns() const;
    void MeasureColumns();
    void WidenForColumns();
    int RoomForColumns() const;
    void ShareOutColumns();
    std::vector<int> ColumnWidths() const;
    void Fill();
    void Sort();
    void ShowOrder() const;
    void TickAll();
    void ShowTick(int item) const;
    void Run(std::size_t action);
    void UpdateButtons() const;

    const ReviewTexts m_texts;
    const std::vector<ReviewColumn> m_columns;
    std::vector<ReviewRow> m_rows;  // an item's data is an index into them
    const std::vector<ReviewAction> m_actions;
    CWindow m_list;
    int m_checked = 0;
    bool m_filling = false;
    int m_sortedBy = 0;
    bool m_descending = false;
    Size m_client;
    UINT m_dpi = 0;   // of that client area
    Size m_smallest;  // of the window, at the scale that it opened with
    UINT m_smallestDpi = 0;
    int m_besideColumns = 0;       // of the client area's width, at that scale
    std::vector<int> m_wanted;     // by the columns' texts
    std::vector<int> m_sharedOut;  // the widths that they were given
};
