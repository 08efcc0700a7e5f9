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

    void onlyAHeldMemoryButtonOpensItsEditor()
    {
        CMemoryButton clicked, held;
        held.resize(60, 40);
        held.show();
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

    void leavingTheEditorReportsOnce_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("opensAt");
        QTest::addColumn<int>("key");
        QTest::newRow("Return") << "359" << 359 << int(Qt::Key_Return);
        QTest::newRow("Enter") << "045" << 45 << int(Qt::Key_Enter);
        QTest::newRow("focus lost") << "M1" << 0 << 0;
        QTest::newRow("below the range") << "-5" << 359 << 0;
    }
    void leavingTheEditorReportsOnce()
    {
        QFETCH(QString, text);
        QFETCH(int, opensAt);
        QFETCH(int, key);
        QDialog window; // where a stray Return would click the button
        CMemoryButton button(&window);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QSignalSpy values(&button, &CMemoryButton::onMemoryValueChanged);
        QSignalSpy clicks(&button, &CMemoryButton::clicked);

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

private:
    static CMemoryButtonSpinEdit *editor(const CMemoryButton &button)
    {
        return button.findChild<CMemoryButtonSpinEdit *>();
    }
};

QTEST_MAIN(TestButtons)
#include "tst_buttons.moc"
