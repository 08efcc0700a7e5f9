// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/mainwindow.h"

/// Runs the program until its last window closes and returns its exit code. The window uses the controller
/// that `makeController` makes, by default the stack switch's. Called once, by main().
int runProgram(int argc, char *argv[], const CMainWindow::ControllerFactory &makeController = nullptr);
