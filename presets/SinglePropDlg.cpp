#include "SinglePropDlg.h"

#include <algorithm>

#include "PromptLayout.h"
#include "Resources.h"
#include "resource.h"

namespace {

struct TextMeasures {
    int textWidth = 0;
    int averageCharacter = 0;
    int lineHeight = 0;
};

TextMeasures Measure(const CDialog& dialog, const std::wstring& text) {
    const CClientDC dc(dialog);
    TextMeasures measures;
    const auto widenBy = [&](HFONT font) {
        const CSelectedObject selected(dc.Get(), font);
        measures.textWidth = std::max(measures.textWidth, TextExtent(dc.Get(), text).width);
    };
    {
        const CSelectedObject dialogFont(dc.Get(), dialog.Font());
        TEXTMETRICW metrics{};
        ::GetTextMetricsW(dc.Get(), &metrics);
        measures.averageCharacter = metrics.tmAveCharWidth;
        measures.lineHeight = metrics.tmHeight + metrics.tmExternalLeading;
    }
    const UniqueFont plain(
        ::CreateFontW(-::MulDiv(8, static_cast<int>(::GetDpiForWindow(dialog.Handle())), 72), 0, 0, 0,
                      FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                      CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, L"MS Sans Serif"));
    widenBy(plain.Get());
    // What stands in for that font may be narrower than the one that the label is drawn in.
    widenBy(dialog.Font());
    return measures;
}

}  // namespace

CSinglePropDlg::CSinglePropDlg(UINT captionId, UINT labelId, std::wstring& value, UINT helpContext)
    : CSinglePropDlg(LoadText(captionId), LoadText(labelId), value, helpContext) {}

CSinglePropDlg::CSinglePropDlg(std::wstring caption, std::wstring label, std::wstring& value,
                               UINT helpContext)
    : CDialog(IDD_SINGLE_PROP),
      m_caption(std::move(caption)),
      m_label(std::move(label)),
      m_value(value),
      m_helpContext(helpContext) {}

bool CSinglePropDlg::OnInitDialog() {
    SetText(m_caption);
    Item(IDC_PROMPT_LABEL).SetText(m_label);
    Item(IDC_PROMPT_VALUE).SetText(m_value);
    if (m_helpContext != 0) ::SetWindowContextHelpId(m_hwnd, m_helpContext);
    PlaceControls();
    return true;
}

void CSinglePropDlg::PlaceControls() const {
    const TextMeasures text = Measure(*this, m_label);
    const int frame = WindowRect().Width() - ClientRect().Width();
    const auto placeOf = [this](int id) { return Item(id).RectIn(m_hwnd); };
    const PromptPlaces places = PlacePrompt({.labelTextWidth = text.textWidth,
                                             .valueLength = m_value.size(),
                                             .averageCharacter = text.averageCharacter,
                                             .lineHeight = text.lineHeight,
                                             .label = placeOf(IDC_PROMPT_LABEL),
                                             .value = placeOf(IDC_PROMPT_VALUE),
                                             .ok = placeOf(IDOK),
                                             .cancel = placeOf(IDCANCEL),
                                             .widest = ::GetSystemMetrics(SM_CXFULLSCREEN) - frame});
    const Rect window = WindowRect();
    const int width = places.clientWidth + frame;
    // The template's place is in the middle; a window of another width stays there.
    ::SetWindowPos(m_hwnd, nullptr, window.left + (window.Width() - width) / 2, window.top, width,
                   window.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
    CGeometryBatch batch(4);
    batch.Move(Item(IDC_PROMPT_LABEL).Handle(), places.label);
    batch.Move(Item(IDC_PROMPT_VALUE).Handle(), places.value);
    batch.Move(Item(IDOK).Handle(), places.ok);
    batch.Move(Item(IDCANCEL).Handle(), places.cancel);
}

void CSinglePropDlg::OnOK() {
    m_value = Item(IDC_PROMPT_VALUE).Text();
    CDialog::OnOK();
}
