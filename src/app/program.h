#pragma once

#include "mainwindow/mainwindow.h"

/// Runs the program from the application object to the last window's closing and returns its exit code. The
/// window stands on what `makeController` makes, or without one on the program's own stack switch. Called
/// once, by main().
int runProgram(int argc, char *argv[], const CMainWindow::ControllerFactory &makeController = nullptr);
