// The copy of a modified layout that outlives a crash.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>

#include "Dialog.h"
#include "Files.h"

/// The copy is `unsaved.pgl`, and `unsaved (2).pgl` of a second program that runs. It is written a minute
/// after the first change and each minute while there are more, and goes when the layout is saved or dropped.
/// A copy belongs to the program that holds the file `.lock` beside it open, which the system closes and
/// removes however that program ends. Failures are silent; a copy that could not be written is tried again a
/// minute later.
class CAutosave {
  public:
    /// `write` makes the copy, and says whether it could.
    CAutosave(const CDialog& dialog, std::wstring folder,
              std::function<bool(const std::wstring& path)> write);

    /// The layout has changed, or now is as it was saved.
    void OnModified(bool modified);
    /// False when the timer is another one.
    bool OnTimer(UINT_PTR timer);

    /// A copy that no running program owns: this one does from here on, so that no other one asks about it.
    /// Each is given once. The caller then says what became of it, by one of the next two.
    std::optional<std::wstring> TakeLeft();
    /// The layout shown is the one that was taken.
    void Keep() { m_written = true; }
    /// It is not: the file, if it is still there, is anybody's.
    void GiveBack() { m_lock.Reset(); }

  private:
    std::wstring NameOf(int number, const wchar_t* extension) const;
    bool TakeFree();
    void Remove();
    void StopTimer();

    const CDialog& m_dialog;
    const std::wstring m_folder;
    const std::function<bool(const std::wstring&)> m_write;
    UniqueFile m_lock;
    std::wstring m_path;     // while the lock is held
    bool m_written = false;  // the file there is a copy of the layout shown
    bool m_changed = false;  // since then
    bool m_waits = false;    // the timer runs
    int m_lastAsked = 0;     // of the copies left behind
};
