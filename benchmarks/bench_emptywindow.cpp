#include "firstpaint.h"

#include <QApplication>
#include <QMainWindow>

// What any window of this Qt costs: the yardstick of the program's start, memory and idle load.

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    FirstPaint firstPaint;
    window.installEventFilter(&firstPaint);
    window.show();
    return QApplication::exec();
}
