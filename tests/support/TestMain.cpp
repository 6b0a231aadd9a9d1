// The entry of the tests that need COM, common controls or a process that ends when it crashes.
#include <windows.h>

#include <commctrl.h>
#include <objbase.h>

#include <cstdio>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // A crash ends the run instead of opening a box that nobody closes.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    // Nor is anything lost of what it said before.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const INITCOMMONCONTROLSEX classes{sizeof(classes),
                                       ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES | ICC_LINK_CLASS};
    InitCommonControlsEx(&classes);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
