#include "LayoutHistory.h"

#include <utility>

namespace {

constexpr std::size_t kMostSteps = 100;
constexpr std::size_t kMostBytes = std::size_t{32} << 20;

}  // namespace

CLayoutHistory::CStep::CStep(CLayoutHistory& history, UINT text)
    : m_history(history), m_text(text), m_changes(history.m_layout.Changes()) {
    if (m_history.m_open == 0) m_history.Keep();
    ++m_history.m_open;
}

CLayoutHistory::CStep::~CStep() {
    --m_history.m_open;
    if (m_history.m_open == 0 && m_history.m_layout.Changes() != m_changes) m_history.Add(m_text);
}

void CLayoutHistory::Forget() {
    m_states.clear();
    m_states.reserve(kMostSteps + 2);  // adding a step can't fail then
    m_states.emplace_back();
    m_at = 0;
    m_bytes = 0;
}

void CLayoutHistory::NoteSaved() {
    for (State& state : m_states) state.modified = true;
}

void CLayoutHistory::Keep() {
    CRememberedTree now(m_layout);
    State& state = m_states[m_at];
    // A record that only the tree had is new; one that only the old state has goes with it.
    m_bytes += now.Bytes(2);
    m_bytes -= state.tree.Bytes(1);
    state.tree = std::move(now);
    state.modified = m_layout.IsModified();
}

void CLayoutHistory::Add(UINT text) {
    while (m_at + 1 < m_states.size()) Drop(m_states.end() - 1);
    m_states.push_back({.text = text, .tree = {}, .modified = true});
    while (m_states.size() > 1 && (m_states.size() > kMostSteps + 1 || m_bytes > kMostBytes))
        Drop(m_states.begin());
    m_at = m_states.size() - 1;
    m_states.front().text = 0;
    // The present state is not remembered yet. Records that the tree still holds were left in the sum.
    if (m_at == 0) m_bytes = 0;
}

void CLayoutHistory::Drop(std::vector<State>::iterator state) {
    m_bytes -= state->tree.Bytes(1);
    m_states.erase(state);
}

bool CLayoutHistory::GoTo(std::size_t state) {
    Keep();
    const bool filled = m_states[state].tree.Fill(m_layout);
    if (filled)
        m_at = state;
    else
        m_states[m_at].tree.Fill(m_layout);
    m_layout.SetModified(m_states[m_at].modified);
    return filled;
}
