#include <gtest/gtest.h>

#include "Process.h"
#include "support/FileSandbox.h"

namespace {

/// Plays the system that refuses a program.
template <DWORD Error>
constexpr auto kRefuse = [](auto...) -> BOOL {
    ::SetLastError(Error);
    return FALSE;
};

TEST(Process, AProgramThatNeedsAnAdministratorIsStartedByTheSystemsQuestion) {
    const support::FileSandbox files;
    const CWindow owner(::CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr));
    const std::wstring shell = L"\"C:\\windows\\system32\\cmd.exe\" ",
                       say = L" /c echo yes>\"" + files.Path(L"said") + L"\"";
    EXPECT_FALSE(CProcess::Start(owner, shell, say, kRefuse<ERROR_ACCESS_DENIED>));
    EXPECT_FALSE(CProcess::Start(owner, L"no such.exe", say, kRefuse<740>));
    const auto process = CProcess::Start(owner, shell, say, kRefuse<740>);
    ASSERT_TRUE(process && process->WaitDispatching(owner) && owner.IsEnabled());
    EXPECT_EQ(files.Read(L"said"), "yes\r\n");
    ::DestroyWindow(owner.Handle());
}

}  // namespace
