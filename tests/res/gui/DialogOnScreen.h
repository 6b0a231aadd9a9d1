// A dialog made from its template, hidden, and whether its texts have room.
#pragma once

#include <windows.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace res_test {

struct DialogControl {
    int id = 0;
    std::wstring className;
    DWORD style = 0;
    RECT place{};  // in pixels of the dialog's client area
    std::wstring text;
};

/// The font that a dialog is made with. Points stand for the system's scale as well: 8 points at 150 %
/// are 12.
struct DialogFont {
    WORD points = 8;
    const wchar_t* face = nullptr;  // null for the one that the template names
};

/// The template's bytes with another font.
std::vector<std::byte> WithFont(std::span<const std::byte> dialog, const DialogFont& font);

class CDialogOnScreen {
  public:
    CDialogOnScreen(std::span<const std::byte> dialog, const DialogFont& font);

    bool IsThere() const { return m_dialog != nullptr; }
    SIZE ClientSize() const;
    std::vector<DialogControl> Controls() const;

    /// What is cut off of the control's text; nothing when it is shown in whole. Every kind of control has
    /// room to lose at its edges: frame, glyph, scroll bar.
    std::optional<std::wstring> CutOff(const DialogControl& control) const;

  private:
    struct Destroy {
        void operator()(HWND window) const { ::DestroyWindow(window); }
    };
    using Window = std::unique_ptr<std::remove_pointer_t<HWND>, Destroy>;

    /// The text's size when it is broken into lines of this width.
    SIZE TextSize(const std::wstring& text, long width, UINT format) const;

    Window m_parent;  // of the dialogs that are made to stand within another
    Window m_dialog;
    int m_points;
};

}  // namespace res_test
