// SPDX-License-Identifier: MIT
#pragma once

#include "line/line.h"

/// The line to `portName`, a serial port or "tcp://host:port", not opened yet.
std::unique_ptr<Line> createLine(const QString &portName);
