#include "SaveFailure.h"

#include "Resources.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

/// The system's own words; empty when it has none.
std::wstring SystemText(DWORD error) {
    constexpr DWORD kFlags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    std::wstring text(1024, L'\0');
    text.resize(
        ::FormatMessageW(kFlags, nullptr, error, 0, text.data(), static_cast<DWORD>(text.size()), nullptr));
    text.erase(text.find_last_not_of(L" \r\n") + 1);
    return text;
}

}  // namespace

std::wstring SaveFailureText(const CXMLTreeCtrl& document) {
    using Failure = CXMLTreeCtrl::Failure;
    switch (document.LastFailure()) {
        case Failure::Text:
            return FormatText(LoadText(IDS_UNWRITABLE_TEXT), document.FailedName());
        case Failure::Nesting:
            return FormatText(LoadText(IDS_NESTED_TOO_DEEP), document.FailedName(),
                              CXMLTreeCtrl::kDeepestNesting);
        case Failure::File:
            if (document.SaveError() != ERROR_FILE_TOO_LARGE) return SystemText(document.SaveError());
            return FormatText(LoadText(IDS_LAYOUT_TOO_LARGE), static_cast<int>(CXmlDoc::kLargestFile >> 20));
        case Failure::Unknown:
            break;
    }
    return {};
}
