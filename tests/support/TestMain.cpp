// The entry of the tests that need COM, common controls or a process that ends when it crashes or hangs.
#include <windows.h>

#include <commctrl.h>
#include <objbase.h>

#include <cstdio>
#include <gtest/gtest.h>
#include <thread>

namespace {

constexpr DWORD kLongestRun = 9 * 60 * 1000;  // ms

/// Ends the process at once, after a word on where it was: on Windows nobody else does.
void GiveUp(const char* why) {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    std::printf("[  FAILED  ] %s.%s %s\n", test ? test->test_suite_name() : "between",
                test ? test->name() : "tests", why);
    TerminateProcess(GetCurrentProcess(), 3);
}

LONG CALLBACK OnCrash(EXCEPTION_POINTERS* /*where*/) {
    GiveUp("crashed");
    return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

int main(int argc, char** argv) {
    // A crash ends the run instead of opening a box that nobody closes.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    // Nor is anything lost of what it said before.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    SetUnhandledExceptionFilter(&OnCrash);
    std::thread([] {
        Sleep(kLongestRun);
        GiveUp("hangs");
    }).detach();
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const INITCOMMONCONTROLSEX classes{sizeof(classes),
                                       ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES | ICC_LINK_CLASS};
    InitCommonControlsEx(&classes);
    testing::InitGoogleTest(&argc, argv);
    std::printf("Screen: %d x %d pixels, %u dpi; language %04x, code page %u\n",
                GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN), GetDpiForSystem(),
                GetUserDefaultUILanguage(), GetACP());
    return RUN_ALL_TESTS();
}
