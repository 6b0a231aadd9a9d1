#include <algorithm>

#include "Commands.h"
#include "FileStream.h"
#include "LayoutPath.h"
#include "LayoutReader.h"
#include "Messages.h"
#include "PresetReview.h"
#include "StudioSetFile.h"

namespace {

/// Says what is wrong with the files.
class CVerifier {
  public:
    explicit CVerifier(const CPluginInventory& inventory) : m_inventory(inventory) {}

    CmdExit Verify(const std::wstring& path);

  private:
    CmdExit Malformed(UINT id) const {
        Say(id, m_path);
        return CmdExit::Failed;
    }
    CmdExit NotHere(const std::wstring& plugin) const {
        Say(IDS_CMD_NOT_HERE, m_path, plugin);
        return CmdExit::Findings;
    }
    CmdExit VerifyLayout() const;
    CmdExit VerifyItems(const std::vector<LayoutNode>& nodes) const;
    CmdExit VerifyPresets() const;
    CmdExit VerifySet() const;

    const CPluginInventory& m_inventory;
    std::wstring m_path;
};

CmdExit CVerifier::Verify(const std::wstring& path) {
    m_path = path;
    CPatience patience;
    if (!OpenForReading(path, patience)) {
        SayFileError(path, ::GetLastError());
        return CmdExit::Failed;
    }
    if (HasExtension(path, L".pgl")) return VerifyLayout();
    if (HasExtension(path, L".spp")) return VerifyPresets();
    if (HasExtension(path, L".pgset")) return VerifySet();
    return Malformed(IDS_CMD_MALFORMED);
}

CmdExit CVerifier::VerifyLayout() const {
    const LayoutPlugins plugins{.findVst = [](const Guid&) { return nullptr; }, .mark = [](LayoutItem&) {}};
    CLayoutReader layout(plugins);
    return layout.Load(m_path, false) ? VerifyItems(layout.Items()) : Malformed(IDS_CMD_MALFORMED);
}

CmdExit CVerifier::VerifyItems(const std::vector<LayoutNode>& nodes) const {
    CmdExit result = CmdExit::Done;
    for (const LayoutNode& node : nodes) {
        const LayoutItem& item = node.record;
        if (item.kind == LayoutKind::Plugin && (item.clsid.IsNull() || !m_inventory.IsInstalled(item.clsid)))
            result = Worse(result, NotHere(item.name));
        result = Worse(result, VerifyItems(node.children));
    }
    return result;
}

CmdExit CVerifier::VerifyPresets() const {
    const auto find = [this](const Guid& clsid, const Guid& category) {
        return m_inventory.FindForPresets(clsid, category);
    };
    PluginsInFile found;
    auto file = CFileSource::Open(m_path);
    if (!file || ReadPluginsInFile(
                     *file, find, [] { return true; }, found) != 0)
        return Malformed(IDS_CMD_MALFORMED);
    CmdExit result = CmdExit::Done;
    for (const PluginInFile& plugin : found.plugins) {
        if (!plugin.installed) result = NotHere(plugin.plugin.name);
    }
    return result;
}

CmdExit CVerifier::VerifySet() const {
    StudioSet set;
    switch (ReadStudioSet(m_path, set)) {
        case SetFileRead::Read:
            break;
        case SetFileRead::Newer:
            return Malformed(IDS_CMD_NEWER);
        case SetFileRead::NotOpened:
        case SetFileRead::Malformed:
            return Malformed(IDS_CMD_MALFORMED);
    }
    CmdExit result = CmdExit::Done;
    for (const auto& name : set.names) {
        if (!m_inventory.IsInstalled(name.clsid) && !m_inventory.IsInstalled(name.md5Clsid))
            result = NotHere(name.name);
    }
    if (set.passedOver == 0) return result;
    Say(IDS_CMD_PASSED_OVER, m_path, static_cast<unsigned>(set.passedOver));
    return CmdExit::Findings;
}

}  // namespace

CmdExit VerifyFiles(const CmdArguments& arguments, const CCmdStudio& studio) {
    CVerifier verifier(studio.Inventory());
    CmdExit result = CmdExit::Done;
    std::wstring data;
    for (const std::wstring& path : arguments.operands) {
        const CmdExit verdict = verifier.Verify(path);
        data += verdict == CmdExit::Done ? L"ok" : verdict == CmdExit::Findings ? L"findings" : L"unreadable";
        data += L'\t' + path + L'\n';
        result = Worse(result, verdict);
    }
    return Worse(result, WriteData(data));
}
