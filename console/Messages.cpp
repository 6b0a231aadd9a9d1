#include "Messages.h"

#include "ClsidText.h"
#include "SystemErrorText.h"

std::wstring NameWithId(const std::wstring& name, const Guid& clsid) {
    return name.empty() ? ClsidText(clsid) : name + L' ' + ClsidText(clsid);
}

void SayFileError(const std::wstring& path, DWORD error) {
    CConsole::Say(path + L": " + SystemErrorText(error == ERROR_SUCCESS ? DWORD{ERROR_READ_FAULT} : error));
}

CmdExit WriteData(const std::wstring& data) {
    const DWORD error = CConsole::Write(data);
    if (error == ERROR_SUCCESS) return CmdExit::Done;
    if (error != ERROR_BROKEN_PIPE && error != ERROR_NO_DATA) CConsole::Say(SystemErrorText(error));
    return CmdExit::Failed;
}
