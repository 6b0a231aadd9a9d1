// What is done on every way out of a scope.
#pragma once

#include <utility>

/// Does its work when the scope ends.
template <typename TWork>
class CScopeExit {
  public:
    explicit CScopeExit(TWork work) : m_work(std::move(work)) {}
    ~CScopeExit() { m_work(); }
    CScopeExit(const CScopeExit&) = delete;
    CScopeExit& operator=(const CScopeExit&) = delete;

  private:
    TWork m_work;
};
