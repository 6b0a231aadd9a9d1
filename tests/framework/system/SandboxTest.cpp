// The sandbox that the tests of the stores rely on.
#include <windows.h>

#include <dshow.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wrl/client.h>

#include "support/RegistrySandbox.h"

namespace {

using support::RegistrySandbox;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr wchar_t kScratch[] = L"Software\\CorvaneTestSandbox";
constexpr wchar_t kMark[] = L"Software\\CorvaneSandboxMark";
constexpr wchar_t kPlugin[] = L"{C0A3A5F1-0000-4000-8000-00000000F117}";

std::vector<std::wstring> AudioFilterNames() {
    using Microsoft::WRL::ComPtr;
    ComPtr<IFilterMapper2> mapper;
    ComPtr<IEnumMoniker> monikers;
    const GUID audio[] = {MEDIATYPE_Audio, GUID_NULL};
    std::vector<std::wstring> names;
    if (FAILED(CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&mapper))) ||
        FAILED(mapper->EnumMatchingFilters(&monikers, 0, FALSE, 0, TRUE, 1, audio, nullptr, nullptr, FALSE,
                                           TRUE, 0, nullptr, nullptr, nullptr)))
        return names;
    for (ComPtr<IMoniker> moniker; monikers->Next(1, &moniker, nullptr) == S_OK; moniker.Reset()) {
        ComPtr<IPropertyBag> bag;
        VARIANT name;
        VariantInit(&name);
        if (SUCCEEDED(moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag))) &&
            SUCCEEDED(bag->Read(L"FriendlyName", &name, nullptr)))
            names.emplace_back(name.bstrVal);
        VariantClear(&name);
    }
    return names;
}

TEST(Sandbox, KeepsWhatIsWrittenToEachRootAndRemovesItAtTheEnd) {
    const HKEY roots[] = {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT};
    {
        const RegistrySandbox sandbox;
        for (const HKEY root : roots) {
            EXPECT_FALSE(support::Exists(root, kMark));
            support::SetText(root, kMark, nullptr, L"inside");
            EXPECT_EQ(support::Text(root, kMark, nullptr), L"inside");
        }
        EXPECT_TRUE(support::Exists(HKEY_LOCAL_MACHINE, std::wstring(L"Software\\Classes\\") + kMark));
    }
    for (const HKEY root : roots) EXPECT_FALSE(support::Exists(root, kMark));
    EXPECT_FALSE(support::Exists(HKEY_CURRENT_USER, kScratch));
}

TEST(Sandbox, StartsWithoutTheLeftoversOfACrashedRun) {
    support::SetText(HKEY_CURRENT_USER, std::wstring(kScratch) + L"\\User\\" + kMark, nullptr, L"left");
    const RegistrySandbox sandbox;
    EXPECT_FALSE(support::Exists(HKEY_CURRENT_USER, kMark));
}

TEST(Sandbox, RefusesASecondOneThatWouldUndoTheFirst) {
    const RegistrySandbox sandbox;
    support::CreateKey(HKEY_CURRENT_USER, kMark);
    EXPECT_THROW(RegistrySandbox(), std::runtime_error);
    EXPECT_TRUE(support::Exists(HKEY_CURRENT_USER, kMark));
}

TEST(Sandbox, ListsOnlyItsOwnFiltersAndMediaObjects) {
    const auto systemFilters = AudioFilterNames();
    EXPECT_THAT(systemFilters, Not(Contains(L"Sandboxed filter")));
    {
        const RegistrySandbox sandbox;
        EXPECT_THAT(AudioFilterNames(), IsEmpty());
        support::RegisterAudioFilter(kPlugin, L"Sandboxed filter");
        EXPECT_THAT(AudioFilterNames(), ElementsAre(L"Sandboxed filter"));
        support::RegisterAudioDmo(kPlugin, L"Sandboxed media object");
        EXPECT_EQ(support::Text(HKEY_CLASSES_ROOT,
                                L"DirectShow\\MediaObjects\\" + std::wstring(kPlugin).substr(1, 36), nullptr),
                  L"Sandboxed media object");
    }
    EXPECT_EQ(AudioFilterNames(), systemFilters);
}

}  // namespace
