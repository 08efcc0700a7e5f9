// SPDX-License-Identifier: MIT
#include "widgets/antennabutton.h"
#include "widgets/buttoncaption.h"
#include "widgets/ledbutton.h"
#include "widgets/memorybutton.h"
#include "widgets/memorybuttonspinedit.h"

#include <QDialog>
#include <QSignalSpy>
#include <QtTest>

class TestButtons : public QObject
{
    Q_OBJECT

private slots:
    void aLitLedShowsItsColourAndKeepsItsSize()
    {
        CLedButton led;
        led.setGeometry(0, 0, 24, 20);
        QCOMPARE(led.grab().toImage().pixelColor(12, 10).alpha(), 0);
        led.click();
        QCOMPARE(led.grab().toImage().pixelColor(12, 10), QColor(Qt::red));
        QCOMPARE(led.size(), QSize(24, 20));
    }

    void onlyAPlainAntennaButtonGlowsInItsColour()
    {
        CAntennaButton button;
        // The second gradient is that of the lit button.
        const auto glow = [&] { return QColor(button.styleSheet().section("stop: 0 ", 2).left(7)); };
        QCOMPARE(glow(), QColor(Qt::white));
        button.setColor(Qt::green);
        button.setRedState(false);
        QCOMPARE(glow(), QColor(Qt::green));
        button.setRedState(true);
        QCOMPARE(glow(), QColor(Qt::red));
        button.setRedState(false); // white, whatever the colour was
        QCOMPARE(glow(), QColor(Qt::white));
        button.setRedState(true);
        button.setColor(Qt::blue);
        button.setRedState(true);
        QCOMPARE(glow(), QColor(Qt::blue));
    }

    void aCaptionWrapsThenShrinksThenIsCut()
    {
        constexpr int between = 0;
        struct Row
        {
            QString caption;
            QSize room;
            QString shown; // a pattern, with "|" for a line break
            int pixelSize;
        };
        for (const Row &row :
             {Row{"20m", {90, 60}, "20m", 18}, Row{"&20m", {90, 60}, "&20m", 18},
              Row{"North\nEast", {90, 60}, "North\\|East", 18}, Row{"Yagi A&&B", {60, 60}, "Yagi\\|A&&B", 18},
              Row{"Beverage", {60, 60}, "Beverage", between},
              Row{"Beverage North East again", {60, 40}, "Beverage\\|North East\\|again", between},
              Row{"Beveragebeverage&&beverage", {60, 60}, "Beve[a-z]*\u2026", 9},
              Row{"&&&&&&&&&&&&&&&&", {40, 60}, "(&&)+\u2026", 9}, Row{"a b c d", {12, 20}, ".*\u2026", 9},
              Row{"", {60, 60}, "", 18}, Row{"no room", {-12, 0}, "no room", 18}}) {
            QFont font;
            const FittedCaption fitted = fittedCaption(row.caption, font, row.room, 18);
            const QString text = QString(fitted.text).replace('\n', '|');
            QVERIFY2(QRegularExpression('^' + row.shown + '$').match(text).hasMatch(), qUtf8Printable(text));
            const bool isBetween = fitted.pixelSize > 9 && fitted.pixelSize < 18;
            QVERIFY2(row.pixelSize == between ? isBetween : fitted.pixelSize == row.pixelSize,
                     qUtf8Printable(text));
            font.setPixelSize(fitted.pixelSize);
            const QSize needed = QFontMetrics(font).size(Qt::TextShowMnemonic, fitted.text);
            QVERIFY2(row.room.isEmpty() || needed.width() <= row.room.width(), qUtf8Printable(text));
        }
    }

    void aNameIsCutOnlyInTheSmallestSize()
    {
        for (int width = 20; width < 90; ++width) {
            const FittedCaption fitted = fittedCaption("Beverage", QFont(), {width, 60}, 18);
            QVERIFY2(fitted.text == "Beverage" || fitted.pixelSize == 9, qPrintable(QString::number(width)));
        }
    }

    void aButtonPaintsItsFittedCaptionAndKeepsTheWholeOne()
    {
        CAntennaButton button("Beverage North East"), same;
        for (CAntennaButton *b : {&button, &same}) {
            b->resize(70, 70);
            b->setToolTip("RX1\tF1");
        }
        button.fitCaption(11);
        QCOMPARE(button.text(), QString("Beverage North East"));
        QCOMPARE(button.toolTip(), QString("Beverage North East\nRX1\tF1"));
        same.setFont(button.font());
        same.setText("Beverage\nNorth East");
        QCOMPARE(button.grab().toImage(), same.grab().toImage());
        button.resize(300, 70);
        button.fitCaption(11);
        QCOMPARE(button.toolTip(), QString("RX1\tF1"));
    }

    void onlyAHeldMemoryButtonOpensItsEditor()
    {
        QWidget window; // on Windows a window of its own is wider than this button
        CMemoryButton clicked, held(&window);
        held.resize(60, 40);
        window.show();
        QTest::mouseClick(&clicked, Qt::LeftButton);
        QTest::mousePress(&held, Qt::LeftButton);
        QElapsedTimer time;
        time.start();
        QTRY_VERIFY(held.isLongPressed());
        QVERIFY2(time.elapsed() > 1200 && time.elapsed() < 3000, qPrintable(QString::number(time.elapsed())));
        QCOMPARE(editor(held)->geometry(), QRect(0, 0, 60, 20));
        QVERIFY(editor(held)->isVisible() && !clicked.isLongPressed());
        QTest::mousePress(&held, Qt::LeftButton);
        QVERIFY(!held.isLongPressed());
    }

    void leavingTheEditorReportsOnce()
    {
        QDialog window; // where a stray Return would click the button
        CMemoryButton button(&window);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QSignalSpy values(&button, &CMemoryButton::onMemoryValueChanged);
        QSignalSpy clicks(&button, &CMemoryButton::clicked);
        struct Row
        {
            const char *text;
            int opensAt, key; // 0: the focus is lost
        };
        for (const auto &[text, opensAt, key] :
             {Row{"359", 359, Qt::Key_Return}, Row{"045", 45, Qt::Key_Enter}, Row{"M1", 0, 0},
              Row{"-5", 359, 0}}) {
            values.clear();
            button.setText(text);
            QVERIFY(QMetaObject::invokeMethod(&button, "timeout")); // of a long press
            QTRY_VERIFY(editor(button)->hasFocus());
            QCOMPARE(editor(button)->value(), opensAt);
            QTest::keyClick(editor(button), Qt::Key_Up);
            if (key == 0)
                editor(button)->clearFocus();
            else
                QTest::keyClick(editor(button), Qt::Key(key));
            const int wrapped = (opensAt + 1) % 360;
            QCOMPARE(values, (QList<QVariantList>{{wrapped}}));
            QCOMPARE(button.text(), QString::number(wrapped));
            QVERIFY(editor(button)->isHidden() && clicks.isEmpty());
        }
    }

private:
    static CMemoryButtonSpinEdit *editor(const CMemoryButton &button)
    {
        return button.findChild<CMemoryButtonSpinEdit *>();
    }
};

QTEST_MAIN(TestButtons)
#include "tst_buttons.moc"
