// The steps in which a layout was edited, to be undone and done again.
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

#include "RememberedTree.h"

/// The states between the steps, each as the whole tree at the time it was left. Steps therefore need no
/// inverse of their own, and a layout that was read again in between, with other ids, spoils none. States
/// share the records that are alike in them: one of 10,000 items takes 240 KB.
class CLayoutHistory {
  public:
    explicit CLayoutHistory(CTreeCtrlWrapper& layout) : m_layout(layout) { Forget(); }

    /// To be held while a command changes the layout: what changed meanwhile is one step, under the text of
    /// this id. Of nested ones the outermost counts.
    class CStep {
      public:
        CStep(CLayoutHistory& history, UINT text);
        ~CStep();
        CStep(const CStep&) = delete;
        CStep& operator=(const CStep&) = delete;

      private:
        CLayoutHistory& m_history;
        const UINT m_text;
        const unsigned m_changes;
    };

    /// The step that can be undone, or done again, by its text's id; 0 when there is none.
    UINT UndoText() const { return m_states[m_at].text; }
    UINT RedoText() const { return m_at + 1 < m_states.size() ? m_states[m_at + 1].text : 0; }
    /// False, and the layout as it was, when there is no such step or the tree does not take all items.
    bool Undo() { return m_at > 0 && GoTo(m_at - 1); }
    bool Redo() { return m_at + 1 < m_states.size() && GoTo(m_at + 1); }
    /// The layout is another one.
    void Forget();
    /// All other states now differ from the file.
    void NoteSaved();

  private:
    struct State {
        UINT text = 0;  // of the step that led to it
        CRememberedTree tree;
        bool modified = false;
    };
    /// Remembers the present state, before it is left.
    void Keep();
    void Add(UINT text);
    void Drop(std::vector<State>::iterator state);
    bool GoTo(std::size_t state);

    CTreeCtrlWrapper& m_layout;
    std::vector<State> m_states;  // at least one
    std::size_t m_at = 0;         // the present one; what it holds is from when it was left last
    std::size_t m_bytes = 0;
    int m_open = 0;
};
