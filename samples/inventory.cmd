@echo off
rem Writes the list of all plug-ins as CSV to the given file, for a scheduled inventory.
rem   inventory.cmd FILE
"%~dp0PluginManagerCmd.exe" list --format csv > "%~1"
exit /b %errorlevel%
