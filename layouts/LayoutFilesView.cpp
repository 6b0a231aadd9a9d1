#include "LayoutFilesView.h"

#include "resource.h"

void CLayoutFilesView::OnInitDialog() {
    m_dialog.Item(IDC_LAYOUT_DELETE).Enable(false);
    m_dialog.Item(IDC_LAYOUT_FILE).SetText(L"");
}
