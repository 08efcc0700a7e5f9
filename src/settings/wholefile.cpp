#include "settings/wholefile.h"

#include <QFile>
#include <QSaveFile>

bool copyWholeFile(const QString &source, const QString &target)
{
    QFile from(source);
    if (!from.open(QIODevice::ReadOnly))
        return false;
    const QByteArray contents = from.readAll();
    // Unbuffered, because a last part that the disk did not take goes unnoticed otherwise.
    QSaveFile to(target);
    return to.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && to.write(contents) == contents.size()
        && to.commit();
}
