#include "HelpFile.h"

#include <htmlhelp.h>

#include <array>
#include <utility>

namespace {

UINT EngineCommand(HelpCommand command) {
    switch (command) {
        case HelpCommand::Context:
            return HH_HELP_CONTEXT;
        case HelpCommand::Quit:
            return HH_CLOSE_ALL;
        case HelpCommand::Index:
            return HH_DISPLAY_INDEX;
        case HelpCommand::ContextPopup:
            return HH_DISPLAY_TEXT_POPUP;
        case HelpCommand::ContextMenu:
            return HH_TP_HELP_CONTEXTMENU;
        case HelpCommand::WmHelp:
            return HH_TP_HELP_WM_HELP;
    }
    return HH_DISPLAY_TOPIC;
}

/// `name` beside the program; the program's own path where the two together would be too long for the engine.
std::wstring PathBeside(const std::wstring& programPath, const std::wstring& name) {
    if (name.find_first_of(L"\\/") != std::wstring::npos) return name;
    if (name.size() + programPath.size() >= MAX_PATH) return programPath;
    return programPath.substr(0, programPath.rfind(L'\\') + 1) + name;
}

bool IsInCodePage(const std::wstring& text) {
    BOOL lost = FALSE;
    ::WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), static_cast<int>(text.size()), nullptr,
                          0, nullptr, &lost);
    return !lost;
}

}  // namespace

std::wstring HelpPathForEngine(const std::wstring& path) {
    std::array<wchar_t, MAX_PATH> shortPath{};
    const auto room = static_cast<DWORD>(shortPath.size());
    if (IsInCodePage(path) || ::GetShortPathNameW(path.c_str(), shortPath.data(), room) >= room) return path;
    return shortPath[0] == L'\0' ? path : shortPath.data();
}

bool CHelpFile::Prepare(const std::wstring& programPath, const std::wstring& name) {
    ShutDown();
    m_path = PathBeside(programPath, name);
    // Loaded here and not linked, so that the program starts without the engine, too.
    m_engine.Reset(::LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
    if (!m_engine) return false;
    if (FindFunction(m_engine.Get(), "HtmlHelpW", m_htmlHelp))
        m_htmlHelp(nullptr, nullptr, HH_INITIALIZE, reinterpret_cast<DWORD_PTR>(&m_cookie));
    return m_cookie != 0;
}

HRESULT CHelpFile::Request(HelpCommand command, DWORD_PTR data) const {
    return Show(L"", EngineCommand(command), data);
}

HRESULT CHelpFile::ShowTopic(const std::wstring& topic) const {
    return Show(L"::/" + topic, HH_DISPLAY_TOPIC, 0);
}

HRESULT CHelpFile::Show(const std::wstring& topic, UINT command, DWORD_PTR data) const {
    if (m_cookie == 0 || m_path.empty()) return E_INVALIDARG;
    const std::wstring target = HelpPathForEngine(m_path) + topic;
    return m_htmlHelp(nullptr, target.c_str(), command, data) ? S_OK : E_FAIL;
}

bool CHelpFile::IsMarked() const {
    return ::GetFileAttributesW((m_path + L":Zone.Identifier").c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool CHelpFile::TakesMessage(MSG& message) const {
    return m_cookie != 0 &&
           m_htmlHelp(nullptr, nullptr, HH_PRETRANSLATEMESSAGE, reinterpret_cast<DWORD_PTR>(&message));
}

void CHelpFile::ShutDown() {
    if (const DWORD_PTR cookie = std::exchange(m_cookie, 0))
        m_htmlHelp(nullptr, nullptr, HH_UNINITIALIZE, cookie);
    m_htmlHelp = nullptr;
    m_engine.Reset();
}
