// The compiled help file, shown by the system's help engine.
#pragma once

#include <windows.h>

#include <string>

#include "Handles.h"

/// What requests ask for: the commands of the older help interface.
enum class HelpCommand : unsigned {
    Context = 1,
    Quit = 2,
    Index = 3,
    ContextPopup = 8,
    ContextMenu = 10,
    WmHelp = 12,
};

/// The engine finds no file whose path has letters outside the user's code page. It gets the short form of
/// that, where the disk keeps one.
std::wstring HelpPathForEngine(const std::wstring& path);

/// The engine is loaded when the file is prepared; where it is missing, or has nothing to show, requests fail
/// and nothing else happens.
class CHelpFile {
  public:
    CHelpFile() = default;
    ~CHelpFile() { ShutDown(); }
    CHelpFile(const CHelpFile&) = delete;
    CHelpFile& operator=(const CHelpFile&) = delete;

    /// A name without a separator is looked for beside `programPath`. Gives whether the engine is ready.
    bool Prepare(const std::wstring& programPath, const std::wstring& name);
    /// E_INVALIDARG before the engine is ready, E_FAIL when it shows nothing.
    HRESULT Request(HelpCommand command, DWORD_PTR data) const;
    /// Shows one page of the file, as in "presets.htm".
    HRESULT ShowTopic(const std::wstring& topic) const;
    /// Offers a message of the loop to the help window; true when it was handled.
    bool TakesMessage(MSG& message) const;
    void ShutDown();

    /// Whether Windows notes down that the file came from the internet, and so shows the window without
    /// pages.
    bool IsMarked() const;

    const std::wstring& Path() const { return m_path; }

  private:
    using HtmlHelpFunction = HWND WINAPI(HWND caller, const wchar_t* file, UINT command, DWORD_PTR data);
    HRESULT Show(const std::wstring& topic, UINT command, DWORD_PTR data) const;

    std::wstring m_path;
    UniqueLibrary m_engine;
    HtmlHelpFunction* m_htmlHelp = nullptr;
    DWORD_PTR m_cookie = 0;  // 0: the engine is not initialised; as wide as the engine could write it
};
