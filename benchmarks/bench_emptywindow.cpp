// SPDX-License-Identifier: MIT
#include "firstpaint.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QVBoxLayout>

#include <memory>

// An empty window, with which the program's start and memory are compared. With --raster it does not prepare
// for OpenGL, like the program's window. With --texts it is raster too, and has a style sheet and one label
// in each font of the program's first picture, which shows how much of the start is spent on fonts.

namespace {

/// A label in the font of menus, one in that of memories, and the panel's five.
std::unique_ptr<QWidget> labels()
{
    auto parent = std::make_unique<QWidget>();
    auto *layout = new QVBoxLayout(parent.get());
    for (const char *font : {"", "font-size: 14px; font-weight: bold", "font-size: 9px", "font-size: 11px",
                             "font-size: 12px", "font-size: 16px", "font-size: 20px"}) {
        auto *label = new QLabel(QStringLiteral("Text"));
        label->setStyleSheet(QLatin1String(font));
        layout->addWidget(label);
    }
    return parent;
}

} // namespace

int main(int argc, char *argv[])
{
    const QByteArray argument = argc > 1 ? argv[1] : "";
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets,
                                   argument == "--raster" || argument == "--texts");
    QApplication application(argc, argv);
    QMainWindow window;
    if (argument == "--texts") {
        window.setStyleSheet(QStringLiteral("QWidget { color: #dddddd; background-color: #444444; }"));
        window.setCentralWidget(labels().release());
    }
    FirstPaint firstPaint;
    window.installEventFilter(&firstPaint);
    window.show();
    return QApplication::exec();
}
