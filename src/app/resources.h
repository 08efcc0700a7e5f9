// SPDX-License-Identifier: MIT
#pragma once

/// Registers the pictures and the font that are compiled into the program's library; a static library's
/// resources do not register themselves. May be called again.
void initResources();
