// SPDX-License-Identifier: MIT
#include "widgets/4sanchorlayout.h"

#include <QtTest>

#include <array>

namespace {

QRect corners(int x1, int y1, int x2, int y2)
{
    return {QPoint(x1, y1), QPoint(x2, y2)};
}

} // namespace

class Test4SAnchorLayout : public QObject
{
    Q_OBJECT

private slots:
    void childrenFollowTheirModes()
    {
        const std::pair<std::array<int, 4>, QRect> rows[] = {
            {{2, 1, 2, 2},
             corners(110, 20, 139, 109)}, // left, top, right, bottom: moves across, stretches down
            {{1, 2, 2, 2}, corners(60, 90, 139, 109)},
            {{0, 1, 2, 0}, corners(5, 20, 139, 45)}, // free left and bottom
            {{1, 0, 3, 1}, corners(60, 8, 99, 39)},
            {{3, 1, 2, 0}, corners(90, 48, 133, 93)}}; // scales, the others are ignored
        for (const auto &[modes, geometry] : rows) {
            QWidget container;
            container.resize(100, 50);
            QWidget child(&container);
            child.setGeometry(corners(60, 20, 89, 39));
            C4SAnchorLayout layout(&container);
            layout.addWidget(modes[0], modes[1], modes[2], modes[3], &child);
            child.setGeometry(corners(5, 8, 99, 45));
            container.resize(150, 120);
            layout.relayout();
            QCOMPARE(child.geometry(), geometry);
        }
    }
};

QTEST_MAIN(Test4SAnchorLayout)
#include "tst_4sanchorlayout.moc"
