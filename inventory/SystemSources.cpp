#include "SystemSources.h"

#include <strmif.h>
#include <uuids.h>

#include <array>
#include <ole2.h>

#include "ClsidText.h"
#include "CorvaneKeys.h"
#include "MediaObjectRegister.h"
#include "RegKey.h"
#include "RegistrationIndex.h"
#include "TaskText.h"
#include "Variant.h"

using Microsoft::WRL::ComPtr;

namespace {

std::optional<std::wstring> ReadProperty(IPropertyBag& bag, const wchar_t* name) {
    CVariant value;
    if (FAILED(bag.Read(name, &value.Get(), nullptr))) return std::nullopt;
    return value.Text();
}

std::optional<std::wstring> RegisteredUserType(const Guid& clsid) {
    wchar_t* text = nullptr;
    if (FAILED(::OleRegGetUserType(ToSystem(clsid), USERCLASSTYPE_FULL, &text)) || !text) return std::nullopt;
    return TakeTaskText(text);
}

/// The longest part of a key's name that is read as a class id.
constexpr std::size_t kClsidCharacters = 64;

/// One plug-in for each subkey, until one names no class id; `nameOf` gives nothing for one to leave out.
template <typename TNameOf>
FoundPlugins ReadSubkeys(const std::vector<std::wstring>& keyNames, std::size_t limit, TNameOf&& nameOf) {
    FoundPlugins found;
    for (const std::wstring& keyName : keyNames) {
        if (found.plugins.size() == limit) break;
        const auto clsid = ParseClsid(keyName.substr(0, kClsidCharacters));
        found.complete = clsid.has_value();
        if (!clsid) break;
        if (auto name = nameOf(keyName, *clsid)) found.plugins.push_back({*clsid, std::move(name)});
    }
    return found;
}

/// The longest description of a control surface, in bytes.
constexpr std::size_t kDescriptionBytes = 256;

}  // namespace

std::vector<MonikerPtr> FindFilterMonikers(std::size_t limit) {
    ComPtr<IFilterMapper2> mapper;
    if (FAILED(::CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&mapper))))
        return {};
    const std::array<GUID, 2> audioInput = {MEDIATYPE_Audio, GUID{}};  // any subtype
    ComPtr<IEnumMoniker> enumerator;
    const HRESULT hr = mapper->EnumMatchingFilters(
        &enumerator, 0, /*exact match*/ FALSE, /*merit*/ 0, /*input needed*/ TRUE, 1, audioInput.data(),
        nullptr, nullptr, /*render*/ FALSE, /*output needed*/ TRUE, 0, nullptr, nullptr, nullptr);
    if (hr != S_OK) return {};

    std::vector<IMoniker*> fetched(limit, nullptr);
    ULONG count = 0;
    if (FAILED(enumerator->Next(static_cast<ULONG>(limit), fetched.data(), &count))) return {};
    std::vector<MonikerPtr> monikers(count);
    for (ULONG i = 0; i < count; ++i) monikers[i].Attach(fetched[i]);
    return monikers;
}

FoundPlugins ReadFilters(const std::vector<MonikerPtr>& monikers) {
    FoundPlugins found;
    found.plugins.reserve(monikers.size());
    for (const MonikerPtr& moniker : monikers) {
        FoundPlugin& plugin = found.plugins.emplace_back();
        ComPtr<IPropertyBag> bag;
        if (FAILED(moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag)))) continue;
        plugin.name = ReadProperty(*bag.Get(), L"FriendlyName");
        const auto clsidText = ReadProperty(*bag.Get(), L"CLSID");
        if (!clsidText) continue;
        const auto clsid = ParseClsid(*clsidText);
        if (!clsid) {
            found.plugins.pop_back();
            found.complete = false;
            return found;
        }
        plugin.clsid = *clsid;
    }
    return found;
}

bool WriteProperty(const MonikerPtr& moniker, const wchar_t* name, const std::wstring& text) {
    ComPtr<IPropertyBag> bag;
    CVariant value(text);
    return moniker && value.Text() &&
           SUCCEEDED(moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag))) &&
           SUCCEEDED(bag->Write(name, &value.Get()));
}

FoundPlugins FindMediaObjects(std::size_t limit) {
    FoundPlugins found;
    const ComPtr<IEnumDMO> effects = CMediaObjectRegister::Instance().AudioEffects();
    if (limit == 0 || !effects) return found;
    std::vector<CLSID> clsids(limit);
    std::vector<wchar_t*> names(limit, nullptr);
    DWORD count = 0;
    if (FAILED(effects->Next(static_cast<DWORD>(limit), clsids.data(), names.data(), &count))) return found;
    for (DWORD i = 0; i < count; ++i) {
        FoundPlugin& plugin = found.plugins.emplace_back();
        plugin.clsid = FromSystem(clsids[i]);
        if (names[i]) plugin.name = TakeTaskText(names[i]);
    }
    return found;
}

FoundPlugins ReadMidiEffects(const std::vector<std::wstring>& keyNames, const NameMap& names,
                             std::size_t limit) {
    return ReadSubkeys(keyNames, limit, [&names](const std::wstring&, const Guid& clsid) {
        auto name = FindName(names, ClsidText(clsid));
        return name ? name : RegisteredUserType(clsid);
    });
}

FoundPlugins ReadControlSurfaces(const std::vector<std::wstring>& keyNames, std::size_t limit) {
    const auto root = CRegKey::Open(HKEY_CLASSES_ROOT, kControlSurfacesKey);
    if (!root) return {};
    return ReadSubkeys(keyNames, limit, [&root](const std::wstring& keyName, const Guid&) {
        const auto key = root->OpenSubkey(keyName);
        return key ? key->ReadString(L"Description", kDescriptionBytes) : std::nullopt;
    });
}

std::optional<std::wstring> FindName(const NameMap& names, const std::wstring& clsid) {
    const auto found = names.find(clsid);
    if (found == names.end() || found->second.empty()) return std::nullopt;
    return found->second;
}
