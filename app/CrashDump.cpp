#include "CrashDump.h"

#include <windows.h>

#include <dbghelp.h>

#include <cstdlib>
#include <exception>
#include <string>

#include "DataFolder.h"
#include "Files.h"
#include "Handles.h"
#include "MessageCaption.h"
#include "Resources.h"
#include "TextFormat.h"
#include "resource.h"

namespace {

/// As debuggers know a C++ exception that nobody catches.
constexpr DWORD kUncaughtException = 0xE06D7363;
/// What a thread whose stack is used up has left to call the handler with.
constexpr ULONG kStackReserve = 16 * 1024;
/// Within the loader or the heap a crash may stop the thread that writes, too; the message still comes.
constexpr DWORD kLongestWriting = 60'000;  // ms

/// Made ready before, because a crash leaves little to make texts with. The file has the time of the start.
struct CrashTexts {
    std::wstring folder;
    std::wstring path;
    std::wstring message;
    std::wstring messageWithPath;
};

const CrashTexts& Texts() {
    static const CrashTexts texts = [] {
        CrashTexts made{
            .folder = DataFolder(), .path = {}, .message = LoadText(IDS_CRASHED), .messageWithPath = {}};
        if (!made.folder.empty()) made.path = made.folder + L"\\crash " + TimeForName() + L".dmp";
        made.messageWithPath = made.message + L"\n\n" + FormatText(LoadText(IDS_CRASH_DUMP), made.path);
        return made;
    }();
    return texts;
}

struct Crash {
    EXCEPTION_POINTERS* where;
    DWORD thread;
    bool dumped = false;
};

bool WriteDump(const Crash& crash) {
    const UniqueLibrary library(::LoadLibraryExW(L"dbghelp.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
    decltype(&::MiniDumpWriteDump) write = nullptr;
    if (!library || !FindFunction(library.Get(), "MiniDumpWriteDump", write)) return false;
    MakeFolders(Texts().folder);
    const UniqueFile file(::CreateFileW(Texts().path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    MINIDUMP_EXCEPTION_INFORMATION exception{crash.thread, crash.where, FALSE};
    return file && write(::GetCurrentProcess(), ::GetCurrentProcessId(), file.Get(), MiniDumpNormal,
                         &exception, nullptr, nullptr);
}

DWORD WINAPI DumpCrash(void* parameter) {
    auto& crash = *static_cast<Crash*>(parameter);
    crash.dumped = WriteDump(crash);
    return 0;
}

DWORD WINAPI ReportCrash(void* parameter) {
    auto& crash = *static_cast<Crash*>(parameter);
    const UniqueKernelHandle writer(::CreateThread(nullptr, 0, &DumpCrash, &crash, 0, nullptr));
    const bool written = writer && ::WaitForSingleObject(writer.Get(), kLongestWriting) == WAIT_OBJECT_0;
    const std::wstring& message = written && crash.dumped ? Texts().messageWithPath : Texts().message;
    // Without an owner: the windows of the thread that crashed answer no more.
    ::MessageBoxW(nullptr, message.c_str(), kMessageCaption, MB_OK | MB_ICONERROR | MB_SETFOREGROUND);
    return 0;
}

/// On threads of its own: that of the crash may have no stack left, and a message there would work on with
/// what crashed.
LONG WINAPI OnCrash(EXCEPTION_POINTERS* where) {
    static volatile LONG crashes = 0;
    static DWORD reporter = 0;
    if (::InterlockedIncrement(&crashes) > 1) {
        // One that has no window any more must not keep the lock on its unsaved layout.
        if (::GetCurrentThreadId() == reporter) ::TerminateProcess(::GetCurrentProcess(), kUncaughtException);
        // What another thread comes to meanwhile is not worth a second message.
        ::Sleep(INFINITE);
    }
    Crash crash{where, ::GetCurrentThreadId()};
    const UniqueKernelHandle thread(::CreateThread(nullptr, 0, &ReportCrash, &crash, 0, &reporter));
    if (thread) ::WaitForSingleObject(thread.Get(), INFINITE);
    return EXCEPTION_EXECUTE_HANDLER;
}

[[noreturn]] void OnTerminate() {
    EXCEPTION_RECORD record{};
    record.ExceptionCode = kUncaughtException;
    CONTEXT context{};
    ::RtlCaptureContext(&context);
    EXCEPTION_POINTERS where{&record, &context};
    OnCrash(&where);
    ::TerminateProcess(::GetCurrentProcess(), kUncaughtException);
    std::abort();
}

}  // namespace

void PrepareForCrash() {
    Texts();
    ULONG reserve = kStackReserve;
    ::SetThreadStackGuarantee(&reserve);
    ::SetUnhandledExceptionFilter(&OnCrash);
    std::set_terminate(&OnTerminate);
}
