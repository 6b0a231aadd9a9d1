// Files for the XML readers: layouts, studio sets, and the records of backups.
#include "BackupRecord.h"
#include "Dialog.h"
#include "DomDocument.h"
#include "StudioSetFile.h"
#include "XmlTreeCtrl.h"
#include "fuzz/FuzzInput.h"
#include "support/FileSandbox.h"
#include "support/LayoutText.h"

using support::LayoutText;
using support::Require;

namespace {

/// One tree for all inputs.
class Layouts {
  public:
    Layouts() {
        Require(m_dialog.CreateModeless(nullptr));
        m_tree.Attach(m_dialog.Item(IDC_LAYOUT_TREE).Handle(), {});
    }
    void Try(const std::wstring& path) {
        // A process has a million of them.
        if (NewPlugin().id > 0xF0000) return;
        support::BuildLayout(m_layout, L"*Old()");
        CXMLTreeCtrl document(m_layout, m_plugins);
        if (!document.Load(path, false))
            return Require(LayoutText(m_layout) == L"*Old()" && !m_layout.IsModified());
        if (document.LayoutName().empty() && !m_tree.Root()) return;  // can't be saved
        const std::string saved = Saved(document);
        const std::wstring shape = LayoutText(m_layout);
        CXMLTreeCtrl again(m_layout, m_plugins);
        Require(again.Load(m_files.Path(L"out.pgl"), false) && LayoutText(m_layout) == shape);
        Require(again.LayoutName() == document.LayoutName() && again.UnsavedFile() == document.UnsavedFile());
        Require(Saved(again) == saved);
    }

  private:
    std::string Saved(CXMLTreeCtrl& document) {
        Require(document.Save(m_files.Path(L"out.pgl")));
        return m_files.Read(L"out.pgl");
    }

    support::FileSandbox m_files;
    CDialog m_dialog{IDD_PLUGIN_MANAGER};
    CTreeCtrlEx m_tree;
    CTreeCtrlWrapper m_layout{m_tree};
    const LayoutPlugins m_plugins{[](const Guid&) { return nullptr; }, [](LayoutItem&) {}};
};

void TryRecord(const std::wstring& path) {
    const auto record = ReadBackupRecord(path);
    if (!record) return;
    std::vector<std::wstring> copies;
    for (const auto& file : record->files) {
        Require(FullPathOf(file.path) == file.path);
        if (!file.copy.empty()) copies.push_back(file.copy);
    }
    if (!record->layout.empty()) copies.push_back(record->layout);
    for (const std::wstring& copy : copies)
        Require(FullPathOf(L"C:\\Backups\\a\\" + copy) == L"C:\\Backups\\a\\" + copy);
    Require(WriteBackupRecord(path, *record) == ERROR_SUCCESS);
    const auto again = ReadBackupRecord(path);
    Require(again && again->keys == record->keys && again->step == record->step);
    Require(std::ranges::equal(again->files, record->files, {}, &BackupRecord::File::copy,
                               &BackupRecord::File::copy));
}

void TryStudioSet(const std::wstring& path) {
    StudioSet set;
    if (ReadStudioSet(path, set) != SetFileRead::Read) return;
    for (const StudioSet::Layout& layout : set.layouts) Require(IsLayoutFileName(layout.file));
    set.passedOver = 0;
    StudioSet again;
    Require(WriteStudioSet(path, set) == ERROR_SUCCESS);
    Require(ReadStudioSet(path, again) == SetFileRead::Read && again == set);
}

void TryDocumentType(std::string_view bytes, const std::wstring& path) {
    const auto document = NewDomDocument();
    Microsoft::WRL::ComPtr<IXMLDOMDocumentType> type;
    if (ParseBytes(*document.Get(), bytes) && document->get_doctype(&type) == S_OK && type)
        Require(!CXmlDoc().Load(path, true));
}

}  // namespace

void TryInput(std::string_view bytes) {
    static const support::FileSandbox s_files;
    static Layouts s_layouts;
    const std::wstring path = s_files.Write(L"in.xml", std::string(bytes));
    TryDocumentType(bytes, path);
    s_layouts.Try(path);
    TryRecord(path);
    s_files.Write(L"in.xml", std::string(bytes));
    // Not every system's parser keeps a prefix that was declared further out.
    if (bytes.find("xmlns") == std::string_view::npos) TryStudioSet(path);
}
