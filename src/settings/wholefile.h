#pragma once

class QString;

/// Puts a copy of the file `source` in the place of `target`, in one step: killed at any moment, or on a full
/// disk, the program leaves the former file or the new one. False when `target` stayed as it was.
bool copyWholeFile(const QString &source, const QString &target);
