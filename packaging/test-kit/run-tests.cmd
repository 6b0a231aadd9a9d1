@echo off
rem Runs the tests on this computer; what they say comes into result.txt beside this file.
rem   run-tests.cmd [--gtest_filter=PATTERN]
setlocal
chcp 65001 >nul
cd /d "%~dp0"
set arguments=%*
set failed=0
rem What the tests write to the disk stays in this folder.
set TEMP=%CD%\temp
set TMP=%CD%\temp
if not exist temp mkdir temp

>result.txt echo Test kit of Corvane Plug-in Manager @VERSION@, @DATE@
>>result.txt ver
call :run unit
call :run system
call :run gui
if not "%USERNAME%"=="WDAGUtilityAccount" goto outside

rem In Windows Sandbox the registry and the disk are nobody's.
mkdir "C:\ProgramData\Corvane Studio\Menu Layouts"
copy /y *.pgl "C:\ProgramData\Corvane Studio\Menu Layouts" >nul
regedit /s studio.reg
studio_registrar.exe
reg add "HKLM\Software\Corvane Music Software" /v Language /d English /f >nul
set STUDIO=1
call :run program
goto end

:outside
>>result.txt echo --- program
>>result.txt echo Left out: it works the real program and the real registry. Start run-in-sandbox.cmd for it.

:end
rem A test program that crashed could not do this itself.
reg delete HKCU\Software\CorvaneTestSandbox /f >nul 2>&1
rmdir /s /q temp
>>result.txt echo --- end
if "%USERNAME%"=="WDAGUtilityAccount" exit /b %failed%
echo Done: please send back %CD%\result.txt
pause
exit /b %failed%

:run
echo The set "%1" is running: leave mouse and keyboard alone.
>>result.txt echo --- %1
%1_tests.exe --gtest_brief=1 %arguments% >temp\%1.txt 2>&1
set code=%errorlevel%
rem Not written by the test program itself: what it leaves running would hold the file.
>>result.txt type temp\%1.txt
>>result.txt echo exit code %code%
if not "%code%"=="0" set failed=1
exit /b
