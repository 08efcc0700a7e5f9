// SPDX-License-Identifier: MIT
#include "widgets/latestyle.h"

#include <QtTest>
#include <QtWidgets>

namespace {

const QString sheet = QStringLiteral("QSpinBox { font-size: 31px; padding: 7px; }");

/// A window with a hidden container, in which is a spin box.
template <typename Container>
struct Window
{
    Window()
    {
        window.setStyleSheet(sheet);
        container->hide();
        field = new QSpinBox(container);
        (new QVBoxLayout(container))->addWidget(field);
        (new QVBoxLayout(&window))->addWidget(container);
    }

    bool isStyled() const { return field->testAttribute(Qt::WA_WState_Polished); }

    QWidget window;
    Container *container = new Container(&window);
    QSpinBox *field;
};

using LateWindow = Window<LateStyledFrame>;
using UsualWindow = Window<QFrame>;

} // namespace

class TestLateStyle : public QObject
{
    Q_OBJECT

private slots:
    void hiddenContentsWaitUntilTheyAreShown()
    {
        LateWindow late;
        UsualWindow usual;
        for (QWidget *window : {&late.window, &usual.window})
            window->show();
        QApplication::processEvents();
        QVERIFY(usual.isStyled());
        QVERIFY(!late.isStyled());

        for (QWidget *container : std::initializer_list<QWidget *>{late.container, usual.container})
            container->show();
        QApplication::processEvents();
        QCOMPARE(late.field->fontInfo().pixelSize(), 31);
        QCOMPARE(late.window.size(), usual.window.size());
        QCOMPARE(late.field->geometry(), usual.field->geometry());
    }

    void measuredOrElsewhereTheyLookTheSame()
    {
        LateWindow late;
        UsualWindow usual;
        late.window.show();
        QApplication::processEvents();
        QCOMPARE(late.container->sizeHint(), usual.container->sizeHint());

        LateWindow emptied;
        emptied.window.show();
        QApplication::processEvents();
        QDialog dialog(&emptied.window);
        (new QVBoxLayout(&dialog))->addWidget(emptied.field);
        dialog.show();
        QCOMPARE(emptied.field->fontInfo().pixelSize(), 31);
    }
};

QTEST_MAIN(TestLateStyle)
#include "tst_latestyle.moc"
