#include "widgets/antennabutton.h"
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
    void ledSheets()
    {
        CLedButton led;
        QCOMPARE(led.styleSheet(),
                 QStringLiteral(
                     "QPushButton{\t\tcolor: #999999;\t\tborder: 1px solid #999999;\t\tborder-radius: 10px;"
                     "\t\tbackground-color: transparent;}   QPushButton:checked{\t\tcolor: #ffffff;"
                     "\t\tborder: 1px solid #ff3030;\t\tborder-radius: 10px;\t\tpadding: 5px;"
                     "\t\tbackground: #ff0000;\t\tmin-width: 80px;}"));
        led.setRadius(4);
        led.setFontSize(12);
        led.setBackgroundColor(QColor(1, 2, 3));
        led.setTextColor(Qt::yellow);
        QCOMPARE(led.styleSheet(),
                 QStringLiteral(
                     "QPushButton{\t\tcolor: #999999;\t\tborder: 1px solid #999999;\t\tborder-radius: 4px;"
                     "\t\tbackground-color: transparent;\t\tfont-size: 12px;}   QPushButton:checked{"
                     "\t\tcolor: #ffff00;\t\tborder: 1px solid #ff3030;\t\tborder-radius: 4px;"
                     "\t\tpadding: 1px;\t\tbackground: #010203;\t\tmin-width: 80px;\t\tfont-size: 12px;}"));
    }

    void aLitLedShowsItsColourAndKeepsItsSize()
    {
        CLedButton led;
        led.setGeometry(0, 0, 24, 20);
        QCOMPARE(led.grab().toImage().pixelColor(12, 10).alpha(), 0);
        led.click();
        QCOMPARE(led.grab().toImage().pixelColor(12, 10), QColor(Qt::red));
        QCOMPARE(led.size(), QSize(24, 20));
    }

    void antennaSheets()
    {
        const QString unlit = QStringLiteral("QPushButton{color: #999999;border: 1px solid "
                                             "#222222;border-radius: 11px;padding: 5px;background: "
                                             "qradialgradient(cx: 0.3, cy: -0.4,fx: 0.3, fy: -0.4,radius: "
                                             "1.35, stop: 0 #888888, stop: 1 #000000);}   ");
        const QString glow =
            unlit
            + "QPushButton:checked{color: #333;border: 1px solid #555;border-radius: 11px;padding: 5px;"
              "background: qradialgradient(cx: 0.3, cy: 0.4,fx: 0.3, fy: -0.4,radius: 4.35, stop: 0 ";
        const QString glowEnd = QStringLiteral(", stop: 1 #333333);min-width: 80px;}");
        const QString red =
            unlit
            + "QPushButton:checked{color: #ffffff;border: 1px solid #555;border-radius: 11px;padding: 5px;"
              "background: qradialgradient(cx: 0.3, cy: 0.4,fx: 0.3, fy: -0.4,radius: 4.35, stop: 0 #ff0000, "
              "stop: 1 #330000);min-width: 80px;}";
        CAntennaButton button;
        QCOMPARE(button.styleSheet(), glow + "#ffffff" + glowEnd);
        button.setColor(Qt::green);
        button.setRedState(false);
        QCOMPARE(button.styleSheet(), glow + "#00ff00" + glowEnd);
        button.setRedState(true);
        QCOMPARE(button.styleSheet(), red);
        button.setRedState(false);
        QCOMPARE(button.styleSheet(), glow + "#ffffff" + glowEnd);
        button.setRedState(true);
        button.setColor(Qt::blue);
        button.setRedState(true);
        QCOMPARE(button.styleSheet(), glow + "#0000ff" + glowEnd);
    }

    void anAntennaButtonTellsPressAndReleaseAfterTheBase()
    {
        CAntennaButton button;
        QStringList log;
        connect(&button, &CAntennaButton::pressed, &button, [&log] { log << "pressed"; });
        connect(&button, &CAntennaButton::onMouseDown, &button, [&log] { log << "down"; });
        connect(&button, &CAntennaButton::toggled, &button, [&log] { log << "toggled"; });
        connect(&button, &CAntennaButton::onMouseUp, &button, [&log] { log << "up"; });
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(log, (QStringList{"pressed", "down", "toggled", "up"}));
    }

    void memorySheets()
    {
        const QString plain = QStringLiteral("font-size: 14px; font-weight: bold;");
        CMemoryButton button;
        for (bool on : {false, true, false}) {
            button.setReadOnlyLook(on);
            QCOMPARE(button.styleSheet(), on ? plain + " background-color: white" : plain);
            QCOMPARE(button.isEnabled(), !on);
        }
    }

    void onlyAnUnlockedHeldMemoryButtonOpensItsEditor()
    {
        CMemoryButton clicked, locked, held;
        held.resize(60, 40);
        held.show();
        locked.setLocked(true);
        QTest::mouseClick(&clicked, Qt::LeftButton);
        QTest::mousePress(&locked, Qt::LeftButton);
        QTest::mousePress(&held, Qt::LeftButton);
        QVERIFY(!held.isLongPressed());
        QTRY_VERIFY(held.isLongPressed());
        QCOMPARE(editor(held)->geometry(), QRect(0, 0, 60, 20));
        QVERIFY(editor(held)->isVisible() && !clicked.isLongPressed() && !locked.isLongPressed());
        QTest::mousePress(&held, Qt::LeftButton);
        QVERIFY(!held.isLongPressed());
    }

    void theEditorOpensAtTheTextAndWraps()
    {
        const QMap<QString, int> values{{"359", 359}, {"045", 45}, {"M1", 0}, {"500", 0}, {"-5", 359}};
        for (auto row = values.begin(); row != values.end(); ++row) {
            CMemoryButton button;
            button.setText(row.key());
            QVERIFY(longPress(button));
            QCOMPARE(editor(button)->value(), row.value());
            QTest::keyClick(editor(button), Qt::Key_Up);
            QCOMPARE(editor(button)->value(), (row.value() + 1) % 360);
            QTest::keyClick(editor(button), Qt::Key_Down);
            QCOMPARE(editor(button)->value(), row.value());
        }
    }

    void leavingTheEditorReportsOnce_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("Return") << int(Qt::Key_Return);
        QTest::newRow("Enter") << int(Qt::Key_Enter);
        QTest::newRow("focus lost") << 0;
    }
    void leavingTheEditorReportsOnce()
    {
        QFETCH(int, key);
        QDialog window; // where a stray Return would click the button
        CMemoryButton button(&window);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QSignalSpy values(&button, &CMemoryButton::onMemoryValueChanged);
        QSignalSpy clicks(&button, &CMemoryButton::clicked);

        QVERIFY(longPress(button));
        QTRY_VERIFY(editor(button)->hasFocus());
        QTest::keyClicks(editor(button), QStringLiteral("072"));
        if (key == 0)
            editor(button)->clearFocus();
        else
            QTest::keyClick(editor(button), Qt::Key(key));
        QCOMPARE(values, (QList<QList<QVariant>>{{72}}));
        QCOMPARE(button.text(), QStringLiteral("72"));
        QVERIFY(editor(button)->isHidden() && clicks.isEmpty());
    }

private:
    static CMemoryButtonSpinEdit *editor(const CMemoryButton &button)
    {
        return button.findChild<CMemoryButtonSpinEdit *>();
    }
    static bool longPress(CMemoryButton &button) { return QMetaObject::invokeMethod(&button, "timeout"); }
};

QTEST_MAIN(TestButtons)
#include "tst_buttons.moc"
