@echo off
rem Puts the brush library where the plug-in looks for it, for the user who runs this. One that is
rem there already stays. With /q it does not wait for a key.
set "folder=%LOCALAPPDATA%\Penwick"
set "library=%folder%\brush_pressure.ai"
if exist "%library%" goto kept
if not exist "%folder%" mkdir "%folder%"
copy /b "%~dp0brush_pressure.ai" "%library%" >nul
if not exist "%library%" goto failed
echo The brush library is in place:
echo "%library%"
set result=0
goto done
:kept
echo There is a brush library already, it was left as it is:
echo "%library%"
set result=0
goto done
:failed
echo The brush library could not be put into
echo "%folder%"
set result=1
:done
if not "%~1"=="/q" pause
exit /b %result%
