#include "antenna/colorwidget.h"
#include "antenna/spinbox.h"
#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "settings/settings.h"
#include "support/scriptedcontroller.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/rotorselectorwidget.h"
#include "widgets/vextralazimuthalwidget.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QSettings>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QtTest>

#include <memory>

namespace {

/// Notes what the antennas ask of it.
struct RecordingBox : ScriptedController
{
    using ScriptedController::ScriptedController;
    bool setCurrentRotor(int rotor) override
    {
        orders << QStringLiteral("select %1").arg(rotor);
        return agrees;
    }
    void turnAntennaFromCurrentToTarget(CVextralAntenna *antenna) override
    {
        orders << QStringLiteral("turn %1 to %2").arg(antenna->index()).arg(antenna->target());
    }

    QStringList orders;
    bool agrees = true;
};

QStringList fileLines()
{
    const QSettings file(CSettings::settingsFilePath(), QSettings::IniFormat);
    QStringList lines;
    const QStringList keys = file.allKeys();
    for (const QString &key : keys)
        lines << key + '=' + file.value(key).toString();
    return lines;
}

/// The lines of the file that were not there before.
QStringList changesSince(const QStringList &before)
{
    QStringList lines = fileLines();
    for (const QString &line : before)
        lines.removeOne(line);
    return lines;
}

void retype(QWidget *field, const QString &text)
{
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
}

} // namespace

class TestAntennaEditor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { cleanup(); }

    void cleanup()
    {
        m_tabs.reset();
        m_box.reset();
        m_map.reset();
        QFile::remove(CSettings::settingsFilePath());
    }

    void spinBoxConfirmsByItsMode()
    {
        // By Return; by every change, where the base tells the value once more on Return.
        const QList<int> counts[] = {{0, 1, 2}, {2, 3, 4}};
        for (int mode : {0, 1}) {
            CSpinBox box;
            box.setConfirmMode(mode);
            QSignalSpy confirmed(&box, &CSpinBox::onConfirm);
            retype(&box, QStringLiteral("90"));
            QCOMPARE(confirmed.count(), counts[mode][0]);
            QTest::keyClick(&box, Qt::Key_Return);
            QCOMPARE(confirmed.count(), counts[mode][1]);
            QTest::keyClick(&box, Qt::Key_Enter);
            QCOMPARE(confirmed.count(), counts[mode][2]);
        }
    }

    void editorShowsItsAntennaAndOrdersNothing()
    {
        open(2);
        CVextralAntenna *antenna = m_box->antenna(2);
        const QStringList before = fileLines();
        antenna->setRotorId(1);
        antenna->setColor(Qt::green);
        antenna->setName(QStringLiteral("Yagi & Co"));
        antenna->setEnabled(true);
        antenna->setAngle(359.7);
        antenna->setEditor(editor(2));
        antenna->refreshEditor();
        QCOMPARE(editor(2)->angleSpinBox()->value(), 359);
        QCOMPARE(editor(2)->colorWidget()->color(), QColor(Qt::green));
        QCOMPARE(editor(2)->nameEdit()->text(), QStringLiteral("Yagi & Co"));
        QCOMPARE(editor(2)->rotorSelector()->currentIndex(), 1);
        QVERIFY(editor(2)->enabledCheckBox()->isChecked());
        QCOMPARE(changesSince(before), QStringList());
        QCOMPARE(m_box->orders, QStringList());
    }

    void steppingPast359WrapsAndIsPassedOnTwice()
    {
        open(1);
        retype(editor(0)->turnToSpinBox(), QStringLiteral("359"));
        QSignalSpy passedOn(m_map.get(), &CVextralAzimuthalWidget::onCurrentAntennaChanged);
        QTest::keyClick(editor(0)->turnToSpinBox(), Qt::Key_Up);
        QCOMPARE(editor(0)->turnToSpinBox()->value(), 0);
        QCOMPARE(passedOn.count(), 2);
        QCOMPARE(m_box->antenna(0)->target(), 0.0);
        QVERIFY2(m_box->orders.isEmpty(), "stepping is no confirmation");
    }

    void confirmedDirectionTurnsTheAntenna_data()
    {
        QTest::addColumn<int>("rotorId");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("agrees");
        QTest::addColumn<QStringList>("orders");
        QTest::addColumn<QStringList>("saved");
        const QStringList none;
        const QStringList angle{"Angles2=90"};
        QTest::newRow("no rotor") << -1 << true << true << none << angle;
        QTest::newRow("a rotor that the box lacks") << 1 << false << true << none << angle;
        QTest::newRow("rotor") << 0 << true << true << QStringList{"select 0", "turn 1 to 90"} << none;
        QTest::newRow("rotor refused") << 0 << true << false << QStringList{"select 0"} << none;
        QTest::newRow("disabled") << 0 << false << true << none << none;
    }
    void confirmedDirectionTurnsTheAntenna()
    {
        QFETCH(int, rotorId);
        QFETCH(bool, enabled);
        QFETCH(bool, agrees);
        open(1);
        m_tabs->setCurrentIndex(1);
        m_box->agrees = agrees;
        CVextralAntenna *antenna = m_box->antenna(1);
        antenna->setRotorId(rotorId);
        antenna->setEnabled(enabled);
        const QStringList before = fileLines();

        retype(editor(1)->turnToSpinBox(), QStringLiteral("90"));
        QCOMPARE(m_box->orders, QStringList());
        QCOMPARE(changesSince(before), QStringList());

        // Somebody else's display has come to be the current one meanwhile.
        m_map->setCurrentAntenna(m_box->antenna(0));
        QTest::keyClick(editor(1)->turnToSpinBox(), Qt::Key_Return);
        QTEST(m_box->orders, "orders");
        QTEST(changesSince(before), "saved");
        QCOMPARE(antenna->angle(), changesSince(before).isEmpty() ? 0.0 : 90.0);
        QCOMPARE(antenna->target(), 90.0);
        QCOMPARE(m_map->currentAntenna(), antenna);
    }

    void onlyTheChangedFieldChangesInTheFile_data()
    {
        QTest::addColumn<QString>("act");
        QTest::addColumn<int>("index");
        QTest::addColumn<QStringList>("saved");
        QTest::newRow("name") << "name" << 1 << QStringList{"Names2=Yagi & Co"};
        QTest::newRow("name of one too many") << "name" << 10 << QStringList();
        QTest::newRow("enabled") << "enabled" << 1 << QStringList{"Enabled2=true"};
        QTest::newRow("rotor") << "rotor" << 1 << QStringList{"RotorID_2=0"};
        QTest::newRow("colour") << "colour" << 1 << QStringList{"Color_2=4278255360"};
        QTest::newRow("colour, cancelled") << "cancel" << 1 << QStringList();
    }
    void onlyTheChangedFieldChangesInTheFile()
    {
        QFETCH(QString, act);
        QFETCH(int, index);
        QFETCH(QStringList, saved);
        open(2);
        m_tabs->setCurrentIndex(1);
        CVextralAntennaUI *page = editor(1);
        m_box->antenna(1)->refreshEditor();
        m_box->antenna(1)->setIndex(index);

        // What others wrote since the editor was made has to stay.
        CSettings others;
        others.comPortName = QStringLiteral("ttyUSB7");
        others.save();
        const QStringList before = fileLines();
        if (saved.isEmpty()) // the file would come back
            QFile::remove(CSettings::settingsFilePath());

        if (act == "name") {
            retype(page->nameEdit(), QStringLiteral("Yagi & Co"));
            QTest::keyClick(page->nameEdit(), Qt::Key_Return);
        } else if (act == "enabled") {
            QTest::keyClick(page->enabledCheckBox(), Qt::Key_Space);
        } else if (act == "rotor") {
            page->rotorSelector()->setFocus();
            QTest::keyClick(page->rotorSelector(), Qt::Key_Left);
        } else {
            QTest::mouseClick(page->colorWidget(), Qt::LeftButton);
            auto *dialog = page->colorWidget()->findChild<QColorDialog *>();
            dialog->setCurrentColor(Qt::green);
            QTest::keyClick(dialog, act == "cancel" ? Qt::Key_Escape : Qt::Key_Return);
            QCOMPARE(m_box->antenna(1)->color() == QColor(Qt::green), act == "colour");
        }
        QCOMPARE(changesSince(before), saved);
        QCOMPARE(fileLines().size(), saved.isEmpty() ? 0 : 77);
    }

    void enabledAndRotorShowInTheMapAtOnce()
    {
        open(1);
        m_map->refreshDisplays(true, true);
        const CRotationDigitalDisplayWidget *display = m_map->displayOf(m_box->antenna(0));
        QVERIFY(!display->isEnabled() && !display->isFixed());
        QTest::keyClick(editor(0)->enabledCheckBox(), Qt::Key_Space);
        QVERIFY(display->isEnabled());
        m_box->antenna(0)->setAngle(123.7);
        QTest::mouseClick(editor(0)->rotorSelector(), Qt::LeftButton, Qt::NoModifier, {10, 10});
        QVERIFY(display->isFixed());
        QCOMPARE(display->value(), 124);
        QCOMPARE(m_box->antenna(0)->target(), 123.7);
    }

    void returnInAFieldLeavesADialogOpen()
    {
        open(1);
        QDialog dialog;
        QVBoxLayout layout(&dialog);
        layout.addWidget(m_tabs.get());
        QDialogButtonBox buttons(QDialogButtonBox::Ok);
        layout.addWidget(&buttons);
        QSignalSpy accepted(&buttons, &QDialogButtonBox::accepted);
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        for (QWidget *field : std::initializer_list<QWidget *>{
                 editor(0)->turnToSpinBox(), editor(0)->nameEdit(), editor(0)->enabledCheckBox()})
            QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(accepted.count(), 0);
        m_tabs->setParent(nullptr);
    }

    void editorAndAntennaMayGoInAnyOrder()
    {
        open(1);
        delete editor(1);
        m_box->antenna(1)->setAngle(45.0);

        CVextralAntennaUI *page = editor(0);
        m_box.reset();
        retype(page->turnToSpinBox(), QStringLiteral("90"));
        QTest::keyClick(page->turnToSpinBox(), Qt::Key_Return);
        QTest::keyClick(page->enabledCheckBox(), Qt::Key_Space);
        QTest::mouseClick(page->rotorSelector(), Qt::LeftButton, Qt::NoModifier, {30, 10});
        QCOMPARE(CSettings().enabled[0], false);
    }

private:
    /// A box with four antennas, their map, and an editor in a tab for each; the first tab is shown.
    void open(int rotors)
    {
        CSettings().save();
        m_map = std::make_unique<CVextralAzimuthalWidget>();
        m_box = std::make_unique<RecordingBox>(rotors);
        m_box->setAzimuthalWiget(m_map.get());
        m_map->setDevice(m_box.get());
        m_tabs = std::make_unique<QTabWidget>();
        for (CVextralAntenna *antenna : m_box->antennas()) {
            auto *page = new CVextralAntennaUI(rotors, m_tabs.get());
            m_tabs->addTab(page, antenna->name());
            antenna->setEditor(page);
        }
        m_tabs->resize(350, 300);
        m_tabs->show();
        m_tabs->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_tabs.get()));
    }

    CVextralAntennaUI *editor(int index) const { return m_box->antenna(index)->editor(); }

    std::unique_ptr<CVextralAzimuthalWidget> m_map;
    std::unique_ptr<RecordingBox> m_box;
    std::unique_ptr<QTabWidget> m_tabs;
};

QTEST_MAIN(TestAntennaEditor)
#include "tst_antennaeditor.moc"
