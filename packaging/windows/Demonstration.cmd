@echo off
rem SPDX-License-Identifier: MIT
rem Opens the program on a simulated box, from a folder of its own, because the settings stand beside the program.
rem With "rotator" it is the rotator's window. This console takes orders for the box.
setlocal
set program=VextralRemoteControl.exe
set model=stack
set port=4040
if "%1"=="rotator" (
    set program=vextral-rotator.exe
    set model=rotator
    set port=4041
)
set folder=%~dp0demonstration\%model%
if not exist "%folder%" mkdir "%folder%"
copy /y "%~dp0%program%" "%folder%" >nul
if not exist "%folder%\AzimuthalMap.png" copy "%~dp0AzimuthalMap.png" "%folder%" >nul
set settings=%folder%\VextralRemoteControl.ini
if exist "%settings%" goto start
>"%settings%" echo [General]
>>"%settings%" echo comPortName=tcp://127.0.0.1:%port%
>>"%settings%" echo Enabled1=true
:start
start "" "%folder%\%program%"
"%~dp0vextral-simbox.exe" --listen 127.0.0.1:%port% --model %model% --relay-box 1
