#include "Messages.h"

#include "SystemErrorText.h"

void SayFileError(const std::wstring& path, DWORD error) {
    CConsole::Say(path + L": " + SystemErrorText(error == ERROR_SUCCESS ? DWORD{ERROR_READ_FAULT} : error));
}

CmdExit WriteData(const std::wstring& data) {
    const DWORD error = CConsole::Write(data);
    if (error == ERROR_SUCCESS) return CmdExit::Done;
    if (error != ERROR_BROKEN_PIPE && error != ERROR_NO_DATA) CConsole::Say(SystemErrorText(error));
    return CmdExit::Failed;
}
