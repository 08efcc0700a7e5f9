// SPDX-License-Identifier: MIT
#pragma once

class QByteArray;
class QString;

/// Puts `contents` in the place of the file `target`, in one step: killed at any moment, or on a full disk,
/// the program leaves the former file or the new one. False when `target` stayed as it was.
bool writeWholeFile(const QByteArray &contents, const QString &target);

/// The same with a copy of the file `source`.
bool copyWholeFile(const QString &source, const QString &target);
