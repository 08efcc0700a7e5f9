// SPDX-License-Identifier: MIT
#include "widgets/antennabutton.h"
#include "widgets/buttoncaption.h"
#include "widgets/ledbutton.h"

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

    void anAntennaButtonGlowsInItsColourOrRed()
    {
        CAntennaButton button;
        button.setChecked(true);
        button.resize(90, 60);
        const auto glow = [&] { return button.grab().toImage().pixelColor(45, 40); };
        button.setColor(Qt::green);
        button.setRedState(false); // as each poll does
        QVERIFY(glow().green() > glow().red() + 50);
        button.setRedState(true);
        QVERIFY(glow().red() > glow().green() + 50);
        button.setRedState(false);
        QVERIFY(glow().red() > 150 && glow().green() > 150);
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
};

QTEST_MAIN(TestButtons)
#include "tst_buttons.moc"
