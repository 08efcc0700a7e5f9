#include "antenna/vextralantenna.h"
#include "antenna/vextralantennaui.h"
#include "app/resources.h"
#include "mainwindow/currentobjects.h"
#include "mainwindow/mainwindow.h"
#include "settings/settings.h"
#include "support/loglines.h"
#include "support/scriptedcontroller.h"
#include "widgets/antennabutton.h"
#include "widgets/memorybutton.h"
#include "widgets/rotationdigitaldisplaywidget.h"
#include "widgets/vextralazimuthalwidget.h"
#include "widgets/vextralremotecontrolwidget.h"

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

namespace {

/// A shown window on a scripted controller.
class Window
{
public:
    using Preparation = std::function<void(ScriptedController &)>;

    explicit Window(const Preparation &prepare = {}, int rotors = 2)
        : m_window([this, prepare, rotors](const CSettings &) {
              controller = new ScriptedController(rotors);
              controller->statuses = {ScriptedController::status(0)};
              controller->angles = {30.0};
              if (prepare)
                  prepare(*controller);
              return controller;
          })
    {
        m_window.show();
        QVERIFY(QTest::qWaitForWindowActive(&m_window));
        controller->sent.clear();
    }

    template <typename Widget>
    Widget *get(const char *name)
    {
        return m_window.findChild<Widget *>(QLatin1String(name));
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&m_window, static_cast<Qt::Key>(key), modifiers);
    }

    QString sent()
    {
        const QString text = controller->sent.join(QLatin1Char(' '));
        controller->sent.clear();
        return text;
    }

    CVextralAntenna *antenna(int index) { return controller->antenna(index); }
    CVextralAzimuthalWidget *map() { return get<CVextralAzimuthalWidget>("azimuthalWidget"); }
    CMainWindow *operator->() { return &m_window; }
    CMainWindow *window() { return &m_window; }

    ScriptedController *controller = nullptr;

private:
    CMainWindow m_window;
};

QString checkedMemories(Window &window)
{
    QString names;
    const auto buttons = window.get<QWidget>("memoryButtonsFrame")->findChildren<QPushButton *>();
    for (const QPushButton *button : buttons) {
        if (button->isChecked())
            names += button->objectName();
    }
    return names;
}

void removeSettings()
{
    QDir folder(QCoreApplication::applicationDirPath());
    const QStringList files =
        folder.entryList({QStringLiteral("VextralRemoteControl.ini*"), QStringLiteral("*.png*")});
    for (const QString &file : files)
        folder.remove(file);
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void init() { removeSettings(); }

    void theWindowStandsOnItsSettings();
    void eachKeyServesOneShortcut_data();
    void eachKeyServesOneShortcut();
    void modesKeepTheirSizes_data();
    void modesKeepTheirSizes();
    void thePropertiesPanelOpensAndClosesWithoutATrace();
    void memoriesTurnTheCurrentAntenna();
    void theOppositeBearingFollowsTargetOrAngle_data();
    void theOppositeBearingFollowsTargetOrAngle();
    void aLongPressEditsAMemoryAndRecallsNothing();
    void aHeldKeyTurnsUntilItIsReallyLetGo_data();
    void aHeldKeyTurnsUntilItIsReallyLetGo();
    void aHeldKeyEndsWithoutAPositionOrAWindow();
    void tabsFollowTheMapAndSwitchRotors();
    void theSettingsDialogBorrowsTheEditors();
    void anotherRelayBoxBringsItsConfiguration();
    void aKeptFileThatIsGarbageGivesDefaults();
    void theMapImageIsReplacedOnlyByOneThatCouldBeCopied();
    void labelsAreEditedWhereTheModelAllows();
};

void TestMainWindow::theWindowStandsOnItsSettings()
{
    CSettings settings;
    settings.names[1] = QStringLiteral("North/East & co");
    settings.angles[1] = 359.7;
    settings.enabled[1] = true;
    settings.memories[2] = QStringLiteral("123");
    settings.relayBoxId = 7;
    settings.relayBoxName = QStringLiteral("Hill");
    settings.comPortName = QStringLiteral("COM9");
    settings.save();
    Window window;
    QCOMPARE(window->windowTitle(), QStringLiteral("Vextral - Lumen Quad 4 7 Hill"));
    QCOMPARE(window.controller->openedPorts, QStringList{QStringLiteral("COM9")});
    QCOMPARE(CurrentObjects::controller(), window.controller);
    auto *tabs = window.get<QTabWidget>("tabWidget");
    QCOMPARE(tabs->count(), 4);
    QCOMPARE(tabs->tabText(3), QStringLiteral("A4"));
    const CVextralAntenna *antenna = window.antenna(1);
    QCOMPARE(antenna->target(), 359.7);
    QVERIFY(antenna->isEnabled() && !antenna->isRotating());
    QCOMPARE(window.map()->displayOf(antenna)->value(), 0);
    QCOMPARE(antenna->editor()->nameEdit()->text(), settings.names[1]);
    QCOMPARE(window.get<QPushButton>("memoButton3")->text(), QStringLiteral("123"));
    QCOMPARE(window.get<QPushButton>("memoButton3")->toolTip(), QStringLiteral("M3\tShift+F3"));
    QCOMPARE(window.get<QPushButton>("plus180Button")->text(), QStringLiteral("+180"));
    const auto *panel = window.get<CVextralRemoteControlWidget>("remoteControlWidget");
    QCOMPARE(panel->antennaButtons().at(0)->toolTip(), QStringLiteral("RX1\tF1"));
    QCOMPARE(QApplication::keyboardInputInterval(), 30000);
    QVERIFY(!window->windowIcon().isNull());
}

void TestMainWindow::eachKeyServesOneShortcut_data()
{
    QTest::addColumn<int>("radios");
    QTest::addColumn<int>("rotors");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("sent");
    QTest::newRow("F1") << 0 << 2 << QStringLiteral("F1") << QStringLiteral("RX0");
    QTest::newRow("F4") << 0 << 2 << QStringLiteral("F4") << QStringLiteral("RX3");
    QTest::newRow("F5") << 0 << 2 << QStringLiteral("F5") << QStringLiteral("TX0");
    QTest::newRow("F8") << 0 << 2 << QStringLiteral("F8") << QStringLiteral("TX3");
    QTest::newRow("F9") << 0 << 2 << QStringLiteral("F9") << QStringLiteral("K9");
    QTest::newRow("F9 without rotors") << 0 << 0 << QStringLiteral("F9") << QStringLiteral("K9");
    QTest::newRow("F9 is the third radio's") << 3 << 0 << QStringLiteral("F9") << QStringLiteral("radio2");
    QTest::newRow("Shift+F10 of a label") << 0 << 2 << QStringLiteral("Shift+F10") << QString();
}

void TestMainWindow::eachKeyServesOneShortcut()
{
    QFETCH(int, radios);
    QFETCH(int, rotors);
    QFETCH(QString, key);
    QFETCH(QString, sent);
    Window window([radios](ScriptedController &controller) { controller.radios = radios; }, rotors);
    const QKeySequence keys(key);
    QTest::keySequence(window.operator->(), keys);
    QCOMPARE(window.sent(), sent);
    int serving = 0;
    const auto shortcuts = window->findChildren<QShortcut *>();
    for (const QShortcut *shortcut : shortcuts) {
        QVERIFY(!shortcut->autoRepeat());
        serving += shortcut->key() == keys;
    }
    QCOMPARE(serving, 1);
}

void TestMainWindow::modesKeepTheirSizes_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("mapSupport");
    QTest::addColumn<QSize>("resized");
    QTest::addColumn<QString>("changed");
    QTest::newRow("extended") << QStringLiteral("extended") << true << QSize(700, 500)
                              << QStringLiteral("extended");
    QTest::newRow("any other word") << QStringLiteral("Mini") << true << QSize(701, 501)
                                    << QStringLiteral("extended");
    QTest::newRow("mini") << QStringLiteral("mini") << true << QSize(600, 300) << QStringLiteral("mini");
    QTest::newRow("supermini") << QStringLiteral("supermini") << true << QSize(610, 310)
                               << QStringLiteral("supermini");
    QTest::newRow("without a map it is always mini")
        << QStringLiteral("extended") << false << QSize(620, 320) << QStringLiteral("mini");
}

void TestMainWindow::modesKeepTheirSizes()
{
    QFETCH(QString, mode);
    QFETCH(bool, mapSupport);
    QFETCH(QSize, resized);
    QFETCH(QString, changed);
    CSettings before;
    before.interfaceMode = mode;
    before.extendedSize = QSize(800, 600);
    before.miniSize = QSize(500, 240);
    before.superMiniSize = QSize(510, 200);
    before.save();
    Window window([mapSupport](ScriptedController &controller) { controller.mapSupport = mapSupport; });
    const bool extended = changed == QLatin1String("extended");
    const bool mini = changed == QLatin1String("mini");
    QCOMPARE(window->size(), extended ? before.extendedSize : mini ? before.miniSize : before.superMiniSize);
    QCOMPARE(window.get<QWidget>("propertiesButton")->isVisible(), extended);
    QCOMPARE(window.get<QWidget>("memoryButtonsFrame")->isVisible(), extended || mini);
    QCOMPARE(window.map()->interfaceMode() == 1, extended);
    QCOMPARE(window.map()->isVisible(), mapSupport && (extended || mini));

    window->resize(resized);
    QTRY_COMPARE(window->size(), resized);
    QCoreApplication::processEvents();
    const CSettings after;
    QCOMPARE(after.extendedSize, extended ? resized : before.extendedSize);
    QCOMPARE(after.miniSize, mini ? resized : before.miniSize);
    QCOMPARE(after.superMiniSize, !extended && !mini ? resized : before.superMiniSize);
    QCOMPARE(window.get<QWidget>("propertiesButton")->geometry(), QRect(resized.width() - 22, 2, 20, 20));
}

void TestMainWindow::thePropertiesPanelOpensAndClosesWithoutATrace()
{
    Window window;
    const QSize size = window->size();
    QVERIFY(!window.get<QWidget>("propertiesFrame")->isVisible());
    window.get<QPushButton>("propertiesButton")->click();
    QVERIFY(window.get<QWidget>("propertiesFrame")->isVisible());
    QCOMPARE(window->size(), size + QSize(350, 0));
    const double zoom = window.map()->zoom();
    window.get<QPushButton>("zoomInButton")->click();
    QCOMPARE(window.map()->zoom(), zoom + 0.2);
    window.get<QPushButton>("zoomInButton_2")->click();
    QCOMPARE(window.map()->zoom(), zoom);
    window.get<QPushButton>("hidePropertiesButton")->click();
    QCOMPARE(window->size(), size);

    window.get<QPushButton>("propertiesButton")->click();
    window->close();
    QCoreApplication::processEvents();
    QCOMPARE(CSettings().extendedSize, size);
}

void TestMainWindow::memoriesTurnTheCurrentAntenna()
{
    CSettings settings;
    settings.memories[0] = QStringLiteral("045");
    settings.memories[9] = QStringLiteral("200");
    settings.memories[8] = QStringLiteral("5000");
    settings.save();
    Window window;
    window.get<CMemoryButton>("memoButton1")->click();
    QCOMPARE(window.sent(), QStringLiteral("K0 M45"));
    QCOMPARE(window.antenna(0)->target(), 45.0);
    QCOMPARE(checkedMemories(window), QStringLiteral("memoButton1"));
    window.press(Qt::Key_F10, Qt::ShiftModifier);
    QCOMPARE(window.sent(), QStringLiteral("K0 M200"));
    QCOMPARE(checkedMemories(window), QStringLiteral("memoButton10"));
    emit window.antenna(0)->onRotationDone();
    QCOMPARE(checkedMemories(window), QString());

    // The lamp tells of the target that is really approached.
    window.controller->duringStatus = [&window] { window.get<CMemoryButton>("memoButton10")->click(); };
    window.get<CMemoryButton>("memoButton1")->click();
    QCOMPARE(window.sent(), QStringLiteral("K0 K0 M200"));
    QCOMPARE(checkedMemories(window), QStringLiteral("memoButton10"));
    window.controller->rotateTo(77.0);
    QCOMPARE(checkedMemories(window), QString());
    window.antenna(0)->setAngle(45.0);
    window.get<CMemoryButton>("memoButton1")->click();
    QCOMPARE(checkedMemories(window), QString()); // it is there already
    window.sent();

    // A label and a number that is no azimuth recall nothing; neither does a box that refuses to switch
    // rotors.
    window.get<CMemoryButton>("memoButton2")->click();
    window.get<CMemoryButton>("memoButton9")->click();
    QCOMPARE(window.sent(), QString());
    window.controller->statuses = {CDeviceStatus()};
    window.get<CMemoryButton>("memoButton1")->click();
    QCOMPARE(window.sent(), QStringLiteral("K0"));
    QCOMPARE(checkedMemories(window), QString());
    window.map()->setCurrentAntenna(nullptr);
    window.press(Qt::Key_F1, Qt::ShiftModifier);
    QCOMPARE(window.sent(), QString());
}

void TestMainWindow::theOppositeBearingFollowsTargetOrAngle_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("target");
    QTest::addColumn<QString>("sent");
    QTest::newRow("from the angle") << 30.9 << -1.0 << QStringLiteral("K0 M210");
    QTest::newRow("from the target") << 30.0 << 190.0 << QStringLiteral("K0 M10");
    QTest::newRow("to north") << 180.0 << -1.0 << QStringLiteral("K0 M0");
    QTest::newRow("from nowhere") << -1.0 << -1.0 << QString();
}

void TestMainWindow::theOppositeBearingFollowsTargetOrAngle()
{
    QFETCH(double, angle);
    QFETCH(double, target);
    QFETCH(QString, sent);
    Window window;
    window.antenna(0)->setAngle(angle);
    window.antenna(0)->setTarget(target);
    window.press(Qt::Key_F12);
    QCOMPARE(window.sent(), sent);
    QCOMPARE(checkedMemories(window), sent.isEmpty() ? QString() : QStringLiteral("plus180Button"));
}

void TestMainWindow::aLongPressEditsAMemoryAndRecallsNothing()
{
    CSettings settings;
    settings.memories[3] = QStringLiteral("90");
    settings.save();
    Window window;
    auto *memory = window.get<CMemoryButton>("memoButton4");
    QTest::mousePress(memory, Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(memory->isLongPressed(), 3000);
    QTest::mouseRelease(memory, Qt::LeftButton);
    QCOMPARE(window.sent(), QString());
    QVERIFY(!memory->isChecked());
    QWidget *editor = QApplication::focusWidget();
    QTest::keyClicks(editor, QStringLiteral("12"));
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(CSettings().memories[3], QStringLiteral("12"));
    QCOMPARE(window.sent(), QString());
    window.press(Qt::Key_F4, Qt::ShiftModifier);
    QCOMPARE(window.sent(), QStringLiteral("K0 M12"));
}

void TestMainWindow::aHeldKeyTurnsUntilItIsReallyLetGo_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("sent");
    QTest::newRow("Left") << int(Qt::Key_Left) << QStringLiteral("M180");
    QTest::newRow("F10") << int(Qt::Key_F10) << QStringLiteral("M180");
    QTest::newRow("Right") << int(Qt::Key_Right) << QStringLiteral("M179");
    QTest::newRow("F11") << int(Qt::Key_F11) << QStringLiteral("M179");
}

void TestMainWindow::aHeldKeyTurnsUntilItIsReallyLetGo()
{
    QFETCH(int, key);
    QFETCH(QString, sent);
    Window window;
    LogLines log;
    window.antenna(0)->setAngle(30.0);
    window.controller->angles = {33.6};
    QTest::keyPress(window.window(), static_cast<Qt::Key>(key));
    QCOMPARE(window.sent(), sent);
    QCOMPARE(window.antenna(0)->target(), -1.0);
    QCOMPARE(window.antenna(0)->previousTarget(), sent.mid(1).toDouble());
    for (int repeat = 0; repeat < 5; ++repeat) { // auto-repeat: release and press in one go
        QTest::keyRelease(window.window(), static_cast<Qt::Key>(key));
        QTest::keyPress(window.window(), static_cast<Qt::Key>(key));
        QTest::qWait(60);
    }
    QCOMPARE(window.sent(), QString());
    QTest::keyRelease(window.window(), static_cast<Qt::Key>(key));
    QCOMPARE(window.sent(), QString());
    QTRY_COMPARE_WITH_TIMEOUT(window.controller->sent, QStringList{QStringLiteral("S")}, 1000);
    QCOMPARE(window.antenna(0)->target(), 33.6);
    QVERIFY(log.contains(QStringLiteral("................. target passou a ser [34]")));
    QVERIFY(log.contains(QStringLiteral("................. changeCurrentAntennaDirection() Stop2")));
}

void TestMainWindow::aHeldKeyEndsWithoutAPositionOrAWindow()
{
    Window window;
    LogLines log;
    window.controller->angles = {-1.0};
    QTest::keyPress(window.window(), Qt::Key_Left);
    QVERIFY(window.map()->isAnimating());
    QDialog other;
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QTRY_VERIFY_WITH_TIMEOUT(window.controller->sent.contains(QStringLiteral("S")), 1000);
    QVERIFY(log.contains(QStringLiteral("................. Impossivel parar interpolacao(parada bruta)")));
    QVERIFY(!window.map()->isAnimating());
    QCOMPARE(window.antenna(0)->target(), -1.0);
}

void TestMainWindow::tabsFollowTheMapAndSwitchRotors()
{
    Window window;
    auto *tabs = window.get<QTabWidget>("tabWidget");
    window.map()->setCurrentAntenna(window.antenna(2));
    QCOMPARE(tabs->currentIndex(), 2);
    QCOMPARE(window.sent(), QString());
    tabs->setCurrentIndex(1);
    QCOMPARE(window.sent(), QStringLiteral("K0 K0 K0")); // which rotor, may it switch, has it
    tabs->setCurrentIndex(3);
    QCOMPARE(window.sent(), QString());
    window.map()->setCurrentAntenna(window.antenna(1));
    QCOMPARE(window.sent(), QString()); // the map's choice switches nothing
    tabs->setCurrentIndex(0);
    window.sent();
    window.controller->duringStatus = [tabs] { tabs->setCurrentIndex(3); };
    tabs->setCurrentIndex(1);
    QCOMPARE(window.sent(), QStringLiteral("K0")); // the tab was left while the box was asked
}

void TestMainWindow::theSettingsDialogBorrowsTheEditors()
{
    Window window;
    auto *tabs = window.get<QTabWidget>("tabWidget");
    window.press(Qt::Key_F5, Qt::ControlModifier);
    auto *dialog = window.get<QDialog>("CSettingsDIalog");
    QVERIFY(dialog->isVisible() && dialog->isModal());
    QVERIFY(dialog->isAncestorOf(tabs) && tabs->isVisible());
    QVERIFY(window.get<QLabel>("modelNameLabel")->text().contains(QStringLiteral(">Lumen Quad 4 name:<")));
    QVERIFY(window.get<QLabel>("modelIdLabel")->text().contains(QStringLiteral(">Lumen Quad 4 id:<")));

    // Return in an editor confirms the editor alone.
    QLineEdit *name = window.antenna(0)->editor()->nameEdit();
    name->setFocus();
    name->setText(QStringLiteral("Beam"));
    QTest::keyClick(name, Qt::Key_Return);
    QVERIFY(dialog->isVisible());
    QCOMPARE(window.antenna(0)->name(), QStringLiteral("Beam"));

    window.get<QRadioButton>("miniUiRadioButton")->setChecked(true);
    window.get<QLineEdit>("stackNameLineEdit")->setText(QStringLiteral("Hill"));
    dialog->accept();
    QVERIFY(!dialog->isAncestorOf(tabs));
    QVERIFY(window.map()->interfaceMode() != 1);
    QCOMPARE(window->windowTitle(), QStringLiteral("Vextral - Lumen Quad 4 1 Hill"));
    QCOMPARE(CSettings().names[0], QStringLiteral("Beam"));

    window.get<QAction>("actionPreferences")->trigger();
    window.get<QRadioButton>("extendedUIRadioButton")->setChecked(true);
    dialog->reject();
    QVERIFY(window.map()->interfaceMode() != 1);
    QVERIFY(window.get<QWidget>("tabWidgetFrame")->isAncestorOf(tabs));
}

void TestMainWindow::anotherRelayBoxBringsItsConfiguration()
{
    CSettings settings;
    settings.names[0] = QStringLiteral("Beam");
    settings.save();
    Window window;
    LogLines log;
    emit window.controller->onRelayBoxIdChanged(1, 2);
    QVERIFY(log.contains(
        QStringLiteral("CMainWindow::onRotorRelayBoxIdChanged() - O atual valor [1] mudou para [2]")));
    QCOMPARE(window.controller->relayBoxId(), 2);
    QCOMPARE(window->windowTitle(), QStringLiteral("Vextral - Lumen Quad 4 2 2"));
    QCOMPARE(window.antenna(0)->name(), QStringLiteral("Beam"));
    CSettings second;
    second.names[0] = QStringLiteral("Dipole");
    second.comPortName = QStringLiteral("COM2");
    second.save();

    emit window.controller->onRelayBoxIdChanged(2, 1);
    QCOMPARE(window.antenna(0)->name(), QStringLiteral("Beam"));
    window.press(Qt::Key_F5, Qt::ControlModifier);
    window.get<QLineEdit>("stackNameLineEdit")->setText(QStringLiteral("Hill"));
    emit window.controller->onRelayBoxIdChanged(1, 2);
    QCOMPARE(window.antenna(0)->name(), QStringLiteral("Dipole"));
    QCOMPARE(window.controller->openedPorts.last(), QStringLiteral("COM2"));
    QCOMPARE(window.get<QLineEdit>("serialPortLineEdit")->text(), QStringLiteral("COM2"));
    window.get<QDialog>("CSettingsDIalog")->reject();
    // What was typed for box 1 was saved before box 2 came.
    emit window.controller->onRelayBoxIdChanged(2, 1);
    QCOMPARE(CSettings().relayBoxName, QStringLiteral("Hill"));
}

void TestMainWindow::aKeptFileThatIsGarbageGivesDefaults()
{
    Window window;
    QFile kept(CSettings::relayBoxFilePath(3));
    QVERIFY(kept.open(QIODevice::WriteOnly));
    kept.write(QByteArray(5000, '\xFE') + "[General\nNames1");
    kept.close();
    emit window.controller->onRelayBoxIdChanged(1, 3);
    QCOMPARE(window.controller->relayBoxId(), 3);
    QCOMPARE(window.antenna(0)->name(), QStringLiteral("Antena1"));
    emit window.controller->onRelayBoxIdChanged(3, 1);
    QCOMPARE(window.controller->relayBoxId(), 1);
}

void TestMainWindow::theMapImageIsReplacedOnlyByOneThatCouldBeCopied()
{
    const QString installed = QCoreApplication::applicationDirPath() + QStringLiteral("/AzimuthalMap.png");
    QTemporaryDir folder;
    const QString chosen = folder.filePath(QStringLiteral("mine.bmp"));
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(Qt::green);
    QVERIFY(image.save(chosen));
    Window window;
    const auto choose = [&window](const QString &file, QMessageBox::StandardButton answer) {
        window.get<QPushButton>("pushButton")->click();
        auto *question = window->findChild<QMessageBox *>();
        QCOMPARE(question->windowTitle(), QStringLiteral("Wait a minute!"));
        QTest::mouseClick(question->button(answer), Qt::LeftButton);
        if (auto *dialog = window->findChild<QFileDialog *>()) {
            emit dialog->fileSelected(file);
            dialog->close();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    choose(chosen, QMessageBox::No);
    QVERIFY(!QFile::exists(installed));
    choose(chosen, QMessageBox::Yes);
    QCOMPARE(QImage(installed).size(), image.size());
    choose(folder.filePath(QStringLiteral("gone.png")), QMessageBox::Yes);
    choose(installed, QMessageBox::Yes);
    choose(folder.path(), QMessageBox::Yes);
    QCOMPARE(QImage(installed).size(), image.size());
}

void TestMainWindow::labelsAreEditedWhereTheModelAllows()
{
    Window without;
    QVERIFY(!without.get<QAction>("actionLabels")->isEnabled());
    Window window([](ScriptedController &controller) {
        controller.labelEditor = true;
        controller.radios = 1;
    });
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.window()));
    window.press(Qt::Key_F6, Qt::ControlModifier);
    auto *dialog = window.get<QDialog>("CAntennaLabelEditorDialog");
    QVERIFY(dialog);
    const auto copies = dialog->findChildren<CAntennaButton *>();
    QCOMPARE(copies.size(), 5);
    copies.at(1)->click();
    dialog->findChild<QPlainTextEdit *>()->setPlainText(QStringLiteral("Two\nlines"));
    copies.at(4)->click();
    dialog->findChild<QPlainTextEdit *>()->setPlainText(QStringLiteral("Rig"));
    dialog->accept();
    const auto *panel = window.get<CVextralRemoteControlWidget>("remoteControlWidget");
    QCOMPARE(panel->radioButtons().at(0)->text(), QStringLiteral("Rig"));
    QCOMPARE(CSettings().names[1], QStringLiteral("Two\nlines"));
    QCOMPARE(window.antenna(1)->name(), QStringLiteral("Two\nlines"));
    QCOMPARE(CSettings().radioNames[0], QStringLiteral("Rig"));
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
