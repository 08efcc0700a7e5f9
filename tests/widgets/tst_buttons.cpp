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
        const auto glow = [&button] {
            for (const QColor color : {Qt::white, Qt::green, Qt::blue, Qt::red}) {
                if (button.styleSheet().contains("stop: 0 " + color.name()))
                    return color;
            }
            return QColor();
        };
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
