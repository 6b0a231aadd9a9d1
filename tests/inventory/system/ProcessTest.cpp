#include <gtest/gtest.h>

#include "Process.h"
#include "support/FileSandbox.h"

namespace {

/// Plays the system, which refuses a program for a reason.
template <DWORD Error>
BOOL WINAPI Refuse(const wchar_t*, wchar_t*, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD, void*,
                   const wchar_t*, STARTUPINFOW*, PROCESS_INFORMATION*) {
    ::SetLastError(Error);
    return FALSE;
}

TEST(Process, AProgramThatNeedsAnAdministratorIsStartedByTheSystemsQuestion) {
    const support::FileSandbox files;
    const CWindow owner(::CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr));
    const std::wstring program = L"\"C:\\windows\\system32\\cmd.exe\" ",
                       arguments = L" /c echo yes>\"" + files.Path(L"said") + L"\"";
    EXPECT_FALSE(CProcess::Start(owner, program, arguments, Refuse<ERROR_ACCESS_DENIED>));
    EXPECT_FALSE(CProcess::Start(owner, files.Path(L"no such.exe"), arguments, Refuse<740>));
    EXPECT_TRUE(files.Names().empty());
    const auto process = CProcess::Start(owner, program, arguments, Refuse<740>);
    ASSERT_TRUE(process && process->WaitDispatching(owner));
    EXPECT_EQ(files.Read(L"said"), "yes\r\n");
    EXPECT_TRUE(owner.IsEnabled());
    ::DestroyWindow(owner.Handle());
}

}  // namespace
