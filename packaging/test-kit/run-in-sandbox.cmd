@echo off
rem Runs all tests in Windows Sandbox; result.txt comes into the folder "sandbox" beside this file.
setlocal
if "%USERNAME%"=="WDAGUtilityAccount" goto inside
chcp 65001 >nul
cd /d "%~dp0"
if not exist sandbox mkdir sandbox
rem It takes folders by their whole paths only, so that the file is written where the kit lies.
>tests.wsb echo ^<Configuration^>
>>tests.wsb echo ^<Networking^>Disable^</Networking^>
>>tests.wsb echo ^<MappedFolders^>
>>tests.wsb echo ^<MappedFolder^>^<HostFolder^>%CD%^</HostFolder^>
>>tests.wsb echo ^<SandboxFolder^>C:\TestKit^</SandboxFolder^>^<ReadOnly^>true^</ReadOnly^>^</MappedFolder^>
>>tests.wsb echo ^<MappedFolder^>^<HostFolder^>%CD%\sandbox^</HostFolder^>
>>tests.wsb echo ^<SandboxFolder^>C:\TestKitResult^</SandboxFolder^>^<ReadOnly^>false^</ReadOnly^>^</MappedFolder^>
>>tests.wsb echo ^</MappedFolders^>
>>tests.wsb echo ^<LogonCommand^>^<Command^>cmd.exe /c start "Tests" C:\TestKit\run-in-sandbox.cmd^</Command^>^</LogonCommand^>
>>tests.wsb echo ^</Configuration^>
start "" tests.wsb
exit /b

:inside
rem The tests write beside themselves, and the kit can only be read here.
xcopy /e /i /q /y "%~dp0." C:\Tests >nul
call C:\Tests\run-tests.cmd %*
copy /y C:\Tests\result.txt C:\TestKitResult >nul
echo Done: result.txt is in the folder "sandbox" of the test kit.
