// SPDX-License-Identifier: MIT
#include "support/faultydisk.h"

#include <QApplication>
#include <QGenericPlugin>
#include <QPixmap>
#include <QSet>
#include <QTimer>
#include <QWidget>

#include <cstdio>

namespace {

/// How many colours a window shows; an empty one has one.
int colorsOf(QWidget *window)
{
    const QImage picture = window->grab().toImage();
    QSet<QRgb> colors;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            colors << picture.pixel(x, y);
    }
    return colors.size();
}

void closeWindow()
{
    QWidget *window = QApplication::activeWindow();
    if (!window)
        return; // not shown yet
    std::printf("%s, %d colours\n", qPrintable(window->windowTitle()), colorsOf(window));
    window->close();
}

} // namespace

/// Loaded by a program that shall say what it shows and be closed as by its operator.
class WindowCloser : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "windowcloser.json")

public:
    QObject *create(const QString &, const QString &) override
    {
        obeyPermissions();
        auto *timer = new QTimer;
        connect(timer, &QTimer::timeout, timer, closeWindow);
        timer->start(10);
        return timer;
    }
};

#include "windowcloser.moc"
