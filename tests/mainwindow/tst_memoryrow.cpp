// SPDX-License-Identifier: MIT
#include "app/resources.h"
#include "settings/settings.h"
#include "support/scriptedwindow.h"
#include "widgets/memorybutton.h"
#include "widgets/memorybuttonspinedit.h"

#include <QtTest>
#include <QtWidgets>

using Box = ScriptedBox;
using Window = ScriptedWindow;

namespace {

/// Holds memory 4 until its editor is open, and types 12 over the 90 that it shows.
QWidget *editMemory(Window &window)
{
    auto *memory = window.get<CMemoryButton>("memoButton4");
    QTest::mousePress(memory, Qt::LeftButton);
    const auto isOpen = [memory] { return memory->isLongPressed(); };
    if (QTest::qWaitFor(isOpen, 1000) || !QTest::qWaitFor(isOpen)) // a slow click is no hold
        return nullptr;
    QTest::mouseRelease(memory, Qt::LeftButton);
    auto *editor = memory->findChild<CMemoryButtonSpinEdit *>();
    if (editor->value() != 90)
        return nullptr;
    QTest::keyClicks(editor, "12");
    return editor;
}

} // namespace

class TestMemoryRow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void init()
    {
        removeSettingsAndMaps();
        CSettings settings;
        settings.memories[3] = "90";
        settings.memories[4] = "200";
        settings.save();
    }

    void anEditEndsWhereTheOperatorGoesOn()
    {
        struct Row
        {
            const char *pressed; // a widget, or nothing
            Qt::Key key;
            QString stored, sent;
        };
        constexpr Qt::Key none = Qt::Key_unknown;
        for (const Row &row : {Row{"memoButton4", none, "12", ""}, Row{"memoButton5", none, "12", "K0 M200"},
                               Row{"remoteControlWidget", none, "12", ""}, Row{"", Qt::Key_Return, "12", ""},
                               Row{"", Qt::Key_Escape, "90", ""}}) {
            init();
            Window window;
            QWidget *editor = editMemory(window);
            QVERIFY(editor && editor->hasFocus());
            if (row.key != none) {
                QTest::keyClick(editor, row.key);
            } else {
                auto *widget = window.get<QWidget>(row.pressed);
                QTest::mouseClick(widget, Qt::LeftButton, {}, {widget->width() / 2, widget->height() - 3});
            }
            QVERIFY(editor->isHidden());
            QCOMPARE(CSettings().memories[3], row.stored);
            QCOMPARE(window.get<CMemoryButton>("memoButton4")->text(), row.stored);
            QCOMPARE(window.sent(), row.sent);
            QCOMPARE(window.litMemories(), QString(row.sent.isEmpty() ? "" : row.pressed));
            QCOMPARE(QApplication::focusWidget(), &window);
        }
    }

    void aWindowThatGoesKeepsWhatWasTyped()
    {
        auto window = std::make_unique<Window>();
        auto *clicked = window->get<CMemoryButton>("memoButton5");
        QTest::mouseClick(clicked, Qt::LeftButton);
        QVERIFY(editMemory(*window) && !clicked->isLongPressed());
        window.reset();
        QCOMPARE(CSettings().memories[3], QString("12"));
    }

    void withoutMapAndRotorNothingIsStored()
    {
        CSettings settings;
        settings.angles[0] = 33.0;
        settings.save();
        Window window([](Box &box) { box.mapSupport = false; }, 0);
        for (const char *keys : {"F12", "Shift+F4"})
            window.press(keys);
        QCOMPARE(CSettings().angles[0], 33.0);
        QCOMPARE(window.antenna(0)->target(), 33.0);
        Window onMap({}, 0);
        onMap.press("Shift+F4");
        QCOMPARE(CSettings().angles[0], 90.0);
    }
};

QTEST_MAIN(TestMemoryRow)
#include "tst_memoryrow.moc"
