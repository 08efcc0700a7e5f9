#include "firstpaint.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QVBoxLayout>

#include <memory>

// What any window of this Qt costs: the yardstick of the program's start, memory and idle load. With --texts
// a style sheet and one label in each of the fonts that the program's first picture needs, which tells how
// much of the program's start is spent on fonts.

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
    QApplication application(argc, argv);
    QMainWindow window;
    if (QCoreApplication::arguments().contains(QStringLiteral("--texts"))) {
        window.setStyleSheet(QStringLiteral("QWidget { color: #dddddd; background-color: #444444; }"));
        window.setCentralWidget(labels().release());
    }
    FirstPaint firstPaint;
    window.installEventFilter(&firstPaint);
    window.show();
    return QApplication::exec();
}
