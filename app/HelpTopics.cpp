#include "HelpTopics.h"

#include <algorithm>

#include "HelpContext.h"
#include "resource.h"

namespace {

constexpr std::wstring_view kLists = L"lists.htm";
constexpr std::wstring_view kFind = L"find.htm";
constexpr std::wstring_view kDetails = L"details.htm";
constexpr std::wstring_view kExclusion = L"exclusion.htm";
constexpr std::wstring_view kPresetFiles = L"preset-files.htm";
constexpr std::wstring_view kManagePresets = L"manage-presets.htm";
constexpr std::wstring_view kVst = L"vst.htm";
constexpr std::wstring_view kAdapter = L"adapter.htm";
constexpr std::wstring_view kLayoutFiles = L"layout-files.htm";
constexpr std::wstring_view kLayoutEditing = L"layout-editing.htm";
constexpr std::wstring_view kTasks = L"tasks.htm";
constexpr std::wstring_view kNamePrompt = L"name-prompt.htm";
constexpr std::wstring_view kStudioSet = L"studio-set.htm";

constexpr HelpTopic kDialogTopics[] = {
    {IDD_ABOUT, L"about.htm"},
    {IDD_PLUGIN_MANAGER, L"window.htm"},
    {IDD_LAYOUT_NAME, L"save-layout.htm"},
    {IDD_SINGLE_PROP, kNamePrompt},
    {IDD_PRESET_FILE, kPresetFiles},
    {IDD_MANAGE_PRESETS, kManagePresets},
    {IDD_TREE_ITEM_PROPERTIES, L"item-properties.htm"},
    {IDD_REVIEW, kTasks},
};

constexpr HelpTopic kControlTopics[] = {
    {IDC_CATEGORIES, kLists},
    {IDC_PLUGINS, kLists},
    {IDC_FIND, kFind},
    {IDC_FILENAME, kDetails},
    {IDC_CLSID, kDetails},
    {IDC_VENDOR, kDetails},
    {IDC_VST_ID, kDetails},
    {IDC_EXCLUDE, kExclusion},
    {IDC_SHOW_ENABLED, kExclusion},
    {IDC_SHOW_EXCLUDED, kExclusion},
    {IDC_SHOW_PERMANENT, kExclusion},
    {IDC_IMPORT, kPresetFiles},
    {IDC_EXPORT, kPresetFiles},
    {IDC_MANAGE, kManagePresets},
    {IDC_VST_OPTIONS, kVst},
    {IDC_VST_PROPERTIES, kVst},
    {IDC_VST_SCAN, kVst},
    {IDC_ADAPTER_WIZARD, kAdapter},
    {IDC_ADAPTER_PROPERTIES, kAdapter},
    {IDC_LAYOUT_NEW, kLayoutFiles},
    {IDC_LAYOUT_OPEN, kLayoutFiles},
    {IDC_LAYOUT_SAVE, kLayoutFiles},
    {IDC_LAYOUT_DELETE, kLayoutFiles},
    {IDC_LAYOUTS, kLayoutFiles},
    {IDC_LAYOUT_TREE, kLayoutEditing},
    {IDC_ADD_PLUGIN, kLayoutEditing},
    {IDC_NEW_FOLDER, kLayoutEditing},
    {IDC_ADD_SEPARATOR, kLayoutEditing},
    {IDC_EXPAND_ALL, kLayoutEditing},
    {IDC_COLLAPSE_ALL, kLayoutEditing},
    {IDC_SORT_ALL, kLayoutEditing},
    {IDC_REMOVE, kLayoutEditing},
    {IDC_MOVE_UP, kLayoutEditing},
    {IDC_MOVE_DOWN, kLayoutEditing},
    {IDC_PROMOTE, kLayoutEditing},
    {IDC_TASKS, kTasks},
};

}  // namespace

std::span<const HelpTopic> DialogTopics() { return kDialogTopics; }

std::span<const HelpTopic> ControlTopics() { return kControlTopics; }

std::optional<std::wstring_view> HelpPageOf(unsigned context) {
    if (context == kHelpOfNames) return kNamePrompt;
    if (context == kHelpOfSets) return kStudioSet;
    const auto isDialog = [=](const HelpTopic& topic) { return HelpOfDialog(topic.id) == context; };
    const auto isControl = [=](const HelpTopic& topic) { return HelpOfControl(topic.id) == context; };
    if (const auto* topic = std::ranges::find_if(kDialogTopics, isDialog); topic != std::end(kDialogTopics))
        return topic->page;
    if (const auto* topic = std::ranges::find_if(kControlTopics, isControl);
        topic != std::end(kControlTopics))
        return topic->page;
    return std::nullopt;
}
