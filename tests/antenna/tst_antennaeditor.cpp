// SPDX-License-Identifier: MIT
#include "antenna/colorwidget.h"
#include "antenna/spinbox.h"
#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "settings/settings.h"
#include "settings/settingsfile.h"
#include "support/scriptedcontroller.h"
#include "widgets/map/vextralazimuthalwidget.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/rotorselectorwidget.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>
#include <utility>

namespace {

/// Notes what the antennas ask of it.
struct RecordingBox : ScriptedController
{
    using ScriptedController::ScriptedController;
    bool setCurrentRotor(int rotor) override
    {
        orders << QString("select %1").arg(rotor);
        return agrees;
    }
    void turnAntennaFromCurrentToTarget(CVextralAntenna *antenna) override
    {
        orders << QString("turn %1 to %2").arg(antenna->index()).arg(antenna->target());
    }

    QStringList orders;
    bool agrees = true;
};

/// Types over what stands in a field.
void retype(QWidget *field, const QString &text)
{
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
}

/// An editor's fields by their names in the form.
struct Fields
{
    const QWidget *editor;
    CSpinBox *turnTo = editor->findChild<CSpinBox *>("turnToSpinBox");
    CColorWidget *color = editor->findChild<CColorWidget *>("colorWidget");
    QLineEdit *name = editor->findChild<QLineEdit *>("nameEdit");
    QCheckBox *enabled = editor->findChild<QCheckBox *>("enabledCheckBox");
    CRotorSelectorWidget *rotor = editor->findChild<CRotorSelectorWidget *>("rotorSelector");
};

} // namespace

class TestAntennaEditor : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        m_tabs.reset();
        m_box.reset();
        m_map.reset();
    }

    void aConfirmedDirectionTurnsTheAntenna()
    {
        struct Row
        {
            const char *name;
            int rotorId; // the box has rotor 0
            bool enabled, agrees;
            QString orders;
        };
        for (const Row &row :
             {Row{"no rotor", -1, true, true, ""}, Row{"a rotor that the box lacks", 1, false, true, ""},
              Row{"rotor", 0, true, true, "select 0, turn 1 to 90"},
              Row{"rotor refused", 0, true, false, "select 0"}, Row{"disabled", 0, false, true, ""}}) {
            open(1);
            m_tabs->setCurrentIndex(1);
            m_box->agrees = row.agrees;
            CVextralAntenna *antenna = m_box->antenna(1);
            antenna->setRotorId(row.rotorId);
            antenna->setEnabled(row.enabled);
            retype(fields(1).turnTo, "90");
            QVERIFY2(m_box->orders.isEmpty() && saved().isEmpty(), row.name);

            // Somebody else's display has come to be the current one meanwhile.
            m_map->setCurrentAntenna(m_box->antenna(0));
            QTest::keyClick(fields(1).turnTo, Qt::Key_Return);
            QVERIFY2(m_box->orders.join(", ") == row.orders, row.name);
            QVERIFY2(antenna->angle() == (row.rotorId == 0 ? 0.0 : 90.0), row.name);
            QVERIFY2(saved() == (row.rotorId == 0 ? QStringList() : QStringList{"Angles2=90"}), row.name);
            QCOMPARE(antenna->target(), 90.0);
            QCOMPARE(m_map->currentAntenna(), antenna);
        }
    }

    void degreesThatAreNotConfirmedAreTakenBack()
    {
        open(2);
        CVextralAntenna *antenna = m_box->antenna(0);
        antenna->setEnabled(true);
        antenna->setTarget(45.0);
        const std::vector<std::pair<std::function<void()>, double>> rows = {
            {[&] { fields(0).name->setFocus(); }, 45.0},
            {[&] { m_tabs->setCurrentIndex(1); }, 45.0},
            {[&] { QTest::keyClick(fields(0).turnTo, Qt::Key_Return); }, 90.0},
            {[&] { antenna->setTarget(200.0); }, 200.0}, // somebody else's
            {[&] {
                 antenna->setTarget(200.0);
                 retype(fields(0).turnTo, "91");
             },
             200.0}};
        for (const auto &[leave, target] : rows) {
            m_tabs->setCurrentIndex(0);
            antenna->setTarget(45.0);
            fields(0).turnTo->setFocus();
            fields(0).turnTo->setValue(0);
            retype(fields(0).turnTo, "90");
            QCOMPARE(antenna->target(), 90.0);
            leave();
            fields(0).name->setFocus();
            QCOMPARE(antenna->target(), target);
        }
    }

    void aChangeShowsInTheMapAndInOneLineOfTheFile()
    {
        open(2);
        m_tabs->setCurrentIndex(1);
        m_map->refreshDisplays(true, true);
        const Fields page = fields(1);
        CVextralAntenna *antenna = m_box->antenna(1);
        const CRotationDigitalDisplayWidget *display = m_map->displayOf(antenna);
        antenna->setAngle(123.7);
        // What others wrote since the editor was made has to stay.
        CSettings others;
        others.comPortName = "ttyUSB7";
        others.save();
        saved();

        retype(page.name, "Yagi & Co");
        QTest::keyClick(page.name, Qt::Key_Return);
        QCOMPARE(saved(), QStringList{"Names2=Yagi & Co"});
        QVERIFY(!display->isEnabled() && !display->isFixed());
        QVERIFY(page.turnTo->toolTip().contains("not in use"));
        QTest::keyClick(page.enabled, Qt::Key_Space);
        QVERIFY(display->isEnabled() && !page.turnTo->toolTip().contains("not in use"));
        QCOMPARE(saved(), QStringList{"Enabled2=true"});
        page.rotor->setFocus();
        QTest::keyClick(page.rotor, Qt::Key_Left);
        QCOMPARE(saved(), QStringList{"RotorID_2=0"});
        QTest::mouseClick(page.rotor, Qt::LeftButton, Qt::NoModifier, {10, 10});
        QVERIFY(display->isFixed());
        QCOMPARE(display->value(), 124);
        QCOMPARE(antenna->target(), 123.7);
        QCOMPARE(saved(), QStringList{"RotorID_2=-1"});
        QTest::mouseClick(page.color, Qt::LeftButton);
        auto *dialog = page.color->findChild<QColorDialog *>();
        dialog->setCurrentColor(Qt::green);
        QTest::keyClick(dialog, Qt::Key_Return);
        QCOMPARE(antenna->color(), QColor(Qt::green));
        QCOMPARE(saved(), QStringList{"Color_2=4278255360"});
    }

    void aRotorThatTheBoxLacksIsLeftWithTheKeyboardToo()
    {
        open(1);
        m_tabs->setCurrentIndex(1);
        m_box->antenna(1)->setRotorId(2);
        m_box->antenna(1)->refreshEditor();
        fields(1).rotor->setFocus();
        for (int rotor : {0, -1, -1}) {
            QTest::keyClick(fields(1).rotor, Qt::Key_Left);
            QCOMPARE(m_box->antenna(1)->rotorId(), rotor);
        }
    }

private:
    /// A box with four antennas, their map, and an editor in a tab for each; the first tab is shown.
    void open(int rotors)
    {
        cleanup();
        QFile::remove(SettingsFile::path());
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
        saved();
    }

    /// The lines of the file that were not there at the last call.
    QStringList saved()
    {
        const QSettings file(SettingsFile::path(), QSettings::IniFormat);
        QStringList lines;
        for (const QString &key : file.allKeys())
            lines << key + '=' + file.value(key).toString();
        QStringList changed = lines;
        for (const QString &line : std::exchange(m_lines, lines))
            changed.removeOne(line);
        return changed;
    }

    Fields fields(int index) const { return {m_box->antenna(index)->editor()}; }

    std::unique_ptr<CVextralAzimuthalWidget> m_map;
    std::unique_ptr<RecordingBox> m_box;
    std::unique_ptr<QTabWidget> m_tabs;
    QStringList m_lines;
};

QTEST_MAIN(TestAntennaEditor)
#include "tst_antennaeditor.moc"
