// The sandbox that the tests of the stores rely on.
#include <windows.h>

#include <gtest/gtest.h>

#include "support/RegistrySandbox.h"

namespace {

using support::RegistrySandbox;

constexpr wchar_t kScratch[] = L"Software\\CorvaneTestSandbox";
constexpr wchar_t kMark[] = L"Software\\CorvaneSandboxMark";

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

}  // namespace
