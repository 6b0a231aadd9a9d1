#include "SaveFailure.h"

#include "Resources.h"
#include "SystemErrorText.h"
#include "TextFormat.h"
#include "resource.h"

std::wstring SaveFailureText(const CXMLTreeCtrl& document) {
    using Failure = CXMLTreeCtrl::Failure;
    switch (document.LastFailure()) {
        case Failure::Text:
            return FormatText(LoadText(IDS_UNWRITABLE_TEXT), document.FailedName());
        case Failure::Nesting:
            return FormatText(LoadText(IDS_NESTED_TOO_DEEP), document.FailedName(),
                              CXMLTreeCtrl::kDeepestNesting);
        case Failure::File:
            if (document.SaveError() != ERROR_FILE_TOO_LARGE) return SystemErrorText(document.SaveError());
            return FormatText(LoadText(IDS_LAYOUT_TOO_LARGE), static_cast<int>(CXmlDoc::kLargestFile >> 20));
        case Failure::Unknown:
            break;
    }
    return {};
}
