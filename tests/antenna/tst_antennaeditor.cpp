#include "antenna/colorwidget.h"
#include "antenna/spinbox.h"
#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "device/vextralremotecontrol.h"
#include "settings/settings.h"
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

/// A box that does as it is told and notes what it was told.
class RecordingBox : public CVextralRemoteControl
{
public:
    RecordingBox(const CSettings &settings, int rotors) : CVextralRemoteControl(&settings), m_rotors(rotors)
    {}

    int rotorCount() override { return m_rotors; }
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

private:
    int m_rotors;
};

using FileContent = QMap<QString, QString>;

FileContent fileContent()
{
    const QSettings file(CSettings::settingsFilePath(), QSettings::IniFormat);
    FileContent content;
    const QStringList keys = file.allKeys();
    for (const QString &key : keys)
        content[key] = file.value(key).toString();
    return content;
}

/// "Key=new value" of each key that differs.
QStringList changes(const FileContent &before, const FileContent &after)
{
    QStringList result;
    for (auto it = after.begin(); it != after.end(); ++it) {
        if (before.value(it.key()) != it.value())
            result << it.key() + '=' + it.value();
    }
    return result;
}

void retype(QWidget *field, const QString &text)
{
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
}

QPoint cell(int number)
{
    return QPoint(20 * number + 10, 10);
}

QColorDialog *openedDialog(CColorWidget *swatch)
{
    return swatch->findChild<QColorDialog *>();
}

} // namespace

class TestAntennaEditor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qRegisterMetaType<CVextralAntenna *>();
        cleanup();
    }

    void cleanup()
    {
        m_tabs.reset();
        m_box.reset();
        m_map.reset();
        QFile::remove(CSettings::settingsFilePath());
    }

    void spinBoxConfirmsByItsMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("afterTyping");
        QTest::addColumn<int>("afterReturn");
        QTest::addColumn<int>("afterEnter");
        QTest::newRow("by Return") << 0 << 0 << 1 << 2;
        // The base tells the value once more on Return.
        QTest::newRow("by every change") << 1 << 2 << 3 << 4;
    }
    void spinBoxConfirmsByItsMode()
    {
        QFETCH(int, mode);
        CSpinBox box;
        box.setConfirmMode(mode);
        QSignalSpy confirmed(&box, &CSpinBox::onConfirm);
        QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&box, "90");
        QTEST(confirmed.count(), "afterTyping");
        QTest::keyClick(&box, Qt::Key_Return);
        QTEST(confirmed.count(), "afterReturn");
        QTest::keyClick(&box, Qt::Key_Enter);
        QTEST(confirmed.count(), "afterEnter");
    }

    void editorShowsItsAntenna()
    {
        open(2);
        CVextralAntenna *antenna = m_box->antenna(2);
        antenna->setRotorId(1);
        antenna->setColor(Qt::green);
        antenna->setName(QStringLiteral("Yagi & Co"));
        const FileContent before = fileContent();
        CVextralAntennaUI *page = editor(2);
        page->turnToSpinBox()->setValue(40);
        antenna->setAngle(359.7);
        antenna->setEditor(page);
        QCOMPARE(antenna->target(), 40.0);

        QCOMPARE(page->antenna(), antenna);
        QCOMPARE(page->angleSpinBox()->value(), 359);
        QVERIFY(page->angleSpinBox()->isReadOnly());
        QCOMPARE(page->turnToSpinBox()->value(), 0);
        QCOMPARE(page->turnToSpinBox()->maximum(), 359);
        QCOMPARE(page->colorWidget()->color(), QColor(Qt::green));
        QCOMPARE(page->nameEdit()->text(), QStringLiteral("Yagi & Co"));
        QCOMPARE(page->rotorSelector()->currentIndex(), 1);

        antenna->setEnabled(true);
        antenna->refreshEditor();
        QVERIFY(page->enabledCheckBox()->isChecked());
        antenna->setRotorId(-1);
        antenna->setEnabled(false);
        antenna->setAngle(1e300);
        QVERIFY2(page->enabledCheckBox()->isChecked(), "only followed on a rotor");
        QCOMPARE(page->angleSpinBox()->value(), 359);
        antenna->setAngle(-1.0);
        QCOMPARE(page->angleSpinBox()->value(), 0);
        QCOMPARE(changes(before, fileContent()), QStringList());
        QVERIFY2(m_box->orders.isEmpty(), "showing is no order");
    }

    void steppingPast359WrapsAndIsPassedOnTwice()
    {
        open(1);
        CVextralAntennaUI *page = editor(0);
        retype(page->turnToSpinBox(), QStringLiteral("359"));
        QSignalSpy passedOn(m_map.get(), &CVextralAzimuthalWidget::onCurrentAntennaChanged);
        QTest::keyClick(page->turnToSpinBox(), Qt::Key_Up);
        QCOMPARE(page->turnToSpinBox()->value(), 0);
        QCOMPARE(passedOn.count(), 2);
        QCOMPARE(m_box->antenna(0)->target(), 0.0);
        QVERIFY2(m_box->orders.isEmpty(), "stepping is no confirmation");
    }

    void confirmedDirectionTurnsTheAntenna_data()
    {
        QTest::addColumn<int>("rotorId");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("agrees");
        QTest::addColumn<QByteArray>("logged");
        QTest::addColumn<QStringList>("orders");
        QTest::addColumn<double>("angle");
        QTest::addColumn<QStringList>("saved");
        const QStringList none;
        QTest::newRow("no rotor") << -1 << true << true << QByteArray("oaaoaoo6: 90") << none << 90.0
                                  << QStringList{"Angles2=90"};
        QTest::newRow("a rotor that the box lacks")
            << 1 << false << true << QByteArray("oaaoaoo6: 90") << none << 90.0 << QStringList{"Angles2=90"};
        QTest::newRow("rotor") << 0 << true << true << QByteArray("tab vaio rodar para")
                               << QStringList{"select 0", "turn 1 to 90"} << 0.0 << none;
        QTest::newRow("rotor refused")
            << 0 << true << false << QByteArray() << QStringList{"select 0"} << 0.0 << none;
        QTest::newRow("disabled") << 0 << false << true << QByteArray("ROTOR NAO CONECTADO") << none << 0.0
                                  << none;
    }
    void confirmedDirectionTurnsTheAntenna()
    {
        QFETCH(int, rotorId);
        QFETCH(bool, enabled);
        QFETCH(bool, agrees);
        QFETCH(QByteArray, logged);
        open(1);
        m_tabs->setCurrentIndex(1);
        m_box->agrees = agrees;
        CVextralAntenna *antenna = m_box->antenna(1);
        antenna->setRotorId(rotorId);
        antenna->setEnabled(enabled);
        const FileContent before = fileContent();

        retype(editor(1)->turnToSpinBox(), QStringLiteral("90"));
        QCOMPARE(m_box->orders, QStringList());
        QCOMPARE(changes(before, fileContent()), QStringList());

        // Somebody else's display has come to be the current one meanwhile.
        m_map->setCurrentAntenna(m_box->antenna(0));
        if (!logged.isEmpty())
            QTest::ignoreMessage(QtDebugMsg, logged.constData());
        QTest::keyClick(editor(1)->turnToSpinBox(), Qt::Key_Return);
        QTEST(m_box->orders, "orders");
        QTEST(antenna->angle(), "angle");
        QCOMPARE(antenna->target(), 90.0);
        QTEST(changes(before, fileContent()), "saved");
        QCOMPARE(m_map->currentAntenna(), antenna);
    }

    void confirmedDirectionHoldsWhileTurning_data()
    {
        QTest::addColumn<int>("rotorId");
        QTest::addColumn<QStringList>("orders");
        QTest::addColumn<int>("displayed");
        QTest::newRow("on a rotor") << 0 << QStringList{"select 0", "turn 0 to 100"} << 20;
        QTest::newRow("taken off its rotor") << -1 << QStringList() << 100;
    }
    void confirmedDirectionHoldsWhileTurning()
    {
        QFETCH(int, rotorId);
        open(1);
        CVextralAntenna *antenna = m_box->antenna(0);
        antenna->setRotorId(rotorId);
        antenna->setEnabled(true);
        // Turning, and the operator has touched its display: the map takes no typed direction, nor another
        // target.
        antenna->setRotating(true);
        antenna->setAngle(20.0);
        antenna->setTarget(20.0);
        m_map->displayOf(antenna)->setValue(20, true);

        retype(editor(0)->turnToSpinBox(), QStringLiteral("100"));
        QTest::keyClick(editor(0)->turnToSpinBox(), Qt::Key_Return);
        QCOMPARE(antenna->target(), 100.0);
        QTEST(m_box->orders, "orders");
        QTEST(m_map->displayOf(antenna)->value(), "displayed");
    }

    void onlyTheChangedFieldChangesInTheFile_data()
    {
        QTest::addColumn<QString>("act");
        QTest::addColumn<int>("index");
        QTest::addColumn<QStringList>("saved");
        const QStringList none;
        QTest::newRow("name") << "name" << 1 << QStringList{"Names2=Yagi & Co"};
        QTest::newRow("name typed, not confirmed") << "typing" << 1 << none;
        QTest::newRow("enabled by click") << "click" << 1 << QStringList{"Enabled2=true"};
        QTest::newRow("enabled by key") << "space" << 1 << QStringList{"Enabled2=true"};
        QTest::newRow("rotor by click") << "no rotor" << 1 << QStringList{"RotorID_2=-1"};
        QTest::newRow("rotor by key") << "left" << 1 << QStringList{"RotorID_2=0"};
        QTest::newRow("no further rotor by key") << "right" << 1 << none;
        QTest::newRow("same rotor again") << "same rotor" << 1 << none;
        QTest::newRow("colour") << "colour" << 1 << QStringList{"Color_2=4278255360"};
        QTest::newRow("name of the tenth") << "name" << 9 << QStringList{"Names10=Yagi & Co"};
        QTest::newRow("name of one too many") << "name" << 10 << none;
        QTest::newRow("colour of one below all") << "colour" << -1 << none;
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
        others.names[0] = QStringLiteral("Vertical");
        others.save();
        const FileContent before = fileContent();
        // Where nothing is to be saved the file would come back.
        if (saved.isEmpty())
            QFile::remove(CSettings::settingsFilePath());

        if (act == "name" || act == "typing") {
            retype(page->nameEdit(), QStringLiteral("Yagi & Co"));
            if (act == "name")
                QTest::keyClick(page->nameEdit(), Qt::Key_Return);
        } else if (act == "click") {
            QTest::mouseClick(page->enabledCheckBox(), Qt::LeftButton, Qt::NoModifier, QPoint(8, 8));
        } else if (act == "space") {
            QTest::keyClick(page->enabledCheckBox(), Qt::Key_Space);
        } else if (act == "no rotor" || act == "same rotor") {
            QTest::mouseClick(page->rotorSelector(), Qt::LeftButton, Qt::NoModifier,
                              cell(act == "no rotor" ? 0 : 2));
        } else if (act == "left" || act == "right") {
            page->rotorSelector()->setFocus();
            QTest::keyClick(page->rotorSelector(), act == "left" ? Qt::Key_Left : Qt::Key_Right);
        } else if (act == "colour") {
            QTest::mouseClick(page->colorWidget(), Qt::LeftButton);
            openedDialog(page->colorWidget())->setCurrentColor(Qt::green);
            openedDialog(page->colorWidget())->accept();
            QCOMPARE(page->colorWidget()->color(), QColor(Qt::green));
            QCOMPARE(m_box->antenna(1)->color(), QColor(Qt::green));
        }
        QCOMPARE(changes(before, fileContent()), saved);
        QCOMPARE(fileContent().size(), saved.isEmpty() ? 0 : 77);
    }

    void enabledShowsInTheMapAtOnce()
    {
        open(1);
        m_map->refreshDisplays(true, true);
        CRotationDigitalDisplayWidget *display = m_map->displayOf(m_box->antenna(0));
        QVERIFY(!display->isEnabled());
        QTest::keyClick(editor(0)->enabledCheckBox(), Qt::Key_Space);
        QVERIFY(display->isEnabled());

        QVERIFY(!display->isFixed());
        m_box->antenna(0)->setAngle(123.7);
        QTest::mouseClick(editor(0)->rotorSelector(), Qt::LeftButton, Qt::NoModifier, cell(0));
        QVERIFY(display->isFixed());
        QCOMPARE(display->value(), 124);
        QCOMPARE(m_box->antenna(0)->angle(), 123.7);
        QCOMPARE(m_box->antenna(0)->target(), 123.7);
    }

    void colourDialogLeavesEverythingWhenCancelled_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("click") << 0;
        QTest::newRow("Space") << int(Qt::Key_Space);
        QTest::newRow("Return") << int(Qt::Key_Return);
    }
    void colourDialogLeavesEverythingWhenCancelled()
    {
        QFETCH(int, key);
        open(1);
        CColorWidget *swatch = editor(0)->colorWidget();
        swatch->setColor(Qt::yellow);
        const FileContent before = fileContent();
        QSignalSpy picked(swatch, &CColorWidget::onColorChanged);
        if (key)
            QTest::keyClick(swatch, Qt::Key(key));
        else
            QTest::mouseClick(swatch, Qt::LeftButton);

        QPointer<QColorDialog> dialog = openedDialog(swatch);
        QVERIFY(dialog && dialog->isModal());
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Escolha uma cor para esta antena"));
        QVERIFY(dialog->testOption(QColorDialog::DontUseNativeDialog));
        QCOMPARE(dialog->currentColor(), QColor(Qt::yellow));
        dialog->setCurrentColor(Qt::red);
        QTest::keyClick(dialog.data(), Qt::Key_Escape);
        QTRY_VERIFY(!dialog);
        QCOMPARE(picked.count(), 0);
        QCOMPARE(swatch->color(), QColor(Qt::yellow));
        QCOMPARE(changes(before, fileContent()), QStringList());
    }

    void swatchIsAllColour()
    {
        CColorWidget swatch;
        QCOMPARE(swatch.color(), QColor(Qt::blue));
        swatch.setColor(Qt::red);
        swatch.resize(40, 20);
        QImage expected(40, 20, QImage::Format_RGB32);
        expected.fill(Qt::red);
        QCOMPARE(swatch.grab().toImage().convertToFormat(QImage::Format_RGB32), expected);
        QCOMPARE(swatch.accessibleDescription(), QStringLiteral("#ff0000"));
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
        QSignalSpy named(editor(0), &CVextralAntennaUI::onNameEdited);

        const QList<QWidget *> fields{editor(0)->turnToSpinBox(), editor(0)->nameEdit(),
                                      editor(0)->enabledCheckBox(), editor(0)->rotorSelector()};
        for (QWidget *field : fields) {
            field->setFocus();
            QTest::keyClick(field, Qt::Key_Return);
            QTest::keyClick(field, Qt::Key_Enter);
        }
        QCOMPARE(accepted.count(), 0);
        QCOMPARE(named.count(), 2);
        QTest::keyClick(editor(0)->nameEdit(), Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
        m_tabs->setParent(nullptr);
    }

    void everyFieldIsReachedByTab()
    {
        open(1);
        editor(0)->angleSpinBox()->setFocus();
        QStringList reached;
        for (int i = 0; i < 6; ++i) {
            reached << QApplication::focusWidget()->objectName();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(reached, QStringList({"angleSpinBox", "turnToSpinBox", "colorWidget", "nameEdit",
                                       "enabledCheckBox", "rotorSelector"}));
    }

    void shownTabMakesItsAntennaCurrent()
    {
        open(1);
        QCOMPARE(m_map->currentAntenna(), m_box->antenna(0));
        m_tabs->setCurrentIndex(2);
        QCOMPARE(m_map->currentAntenna(), m_box->antenna(2));
    }

    void editorAndAntennaMayGoInAnyOrder()
    {
        open(1);
        delete editor(1);
        QVERIFY(!editor(1));
        m_box->antenna(1)->setAngle(45.0);

        CVextralAntennaUI *page = editor(0);
        m_box.reset();
        QVERIFY(!page->antenna());
        retype(page->turnToSpinBox(), QStringLiteral("90"));
        QTest::keyClick(page->turnToSpinBox(), Qt::Key_Return);
        QTest::keyClick(page->enabledCheckBox(), Qt::Key_Space);
        QTest::mouseClick(page->rotorSelector(), Qt::LeftButton, Qt::NoModifier, cell(1));
        QCOMPARE(CSettings().enabled[0], false);
    }

private:
    /// A box with four antennas, their map, and an editor in a tab for each; the first tab is shown.
    void open(int rotors)
    {
        CSettings settings;
        settings.save();
        m_map = std::make_unique<CVextralAzimuthalWidget>();
        m_box = std::make_unique<RecordingBox>(settings, rotors);
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
