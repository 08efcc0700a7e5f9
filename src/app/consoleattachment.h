// SPDX-License-Identifier: MIT
#pragma once

/// Shows the standard output and standard error in the console that started the program, when one did. A
/// windowed program on Windows has no console by itself; elsewhere there is nothing to do.
#ifdef _WIN32
void attachToParentConsole();
#else
inline void attachToParentConsole() {}
#endif
