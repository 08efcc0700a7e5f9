// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

/// Where the simulated box meets the system that it was started from, which each system does differently.
namespace Console {

/// A program started with its standard input closed would get its line as descriptor 0. Call it first.
void occupyStandardDescriptors();

/// Ends the application's event loop in an orderly way when the user or the system asks for it. False when
/// that cannot be arranged.
bool quitOnSignals();

/// Calls `obey` in the application's thread with each line of the standard input, without its line end, until
/// the input ends. The end is not the end of the box, which may run in the background.
void readOrders(const std::function<void(const QString &)> &obey);

/// Leaves the process although orders are still waited for.
int leave(int exitCode);

} // namespace Console
