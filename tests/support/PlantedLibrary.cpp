// Lies beside the program under the name of one of the system's libraries, and leaves a file behind when it
// is loaded.
#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH)
        ::CloseHandle(
            ::CreateFileW(L"C:\\planted.txt", GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    return TRUE;
}
