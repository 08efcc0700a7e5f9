// SPDX-License-Identifier: MIT
#include "settings/wholefile.h"

#include <QFile>
#include <QSaveFile>

bool writeWholeFile(const QByteArray &contents, const QString &target)
{
    // Unbuffered, because a last part that the disk did not take goes unnoticed otherwise.
    QSaveFile to(target);
    return to.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && to.write(contents) == contents.size()
        && to.commit();
}

bool copyWholeFile(const QString &source, const QString &target)
{
    QFile from(source);
    return from.open(QIODevice::ReadOnly) && writeWholeFile(from.readAll(), target);
}
