#include "dialogs/antennalabeleditordialog.h"
#include "dialogs/serialportselectiondialog.h"
#include "dialogs/settingsdialog.h"
#include "settings/settings.h"
#include "support/loglines.h"
#include "widgets/antennabutton.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

namespace {

void press(const QWidget &dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(dialog.findChild<QDialogButtonBox *>()->button(button), Qt::LeftButton);
}

/// Types over what stands in a field.
void retype(QLineEdit *field, const QString &text)
{
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(field, text);
}

/// Keys reach a window only when it is the active one; the platform window may be before the widget knows.
bool becomesActive(const QWidget *window)
{
    return QTest::qWaitFor([window] { return QApplication::activeWindow() == window; });
}

QStringList linesOfSave(const LogLines &log)
{
    return log.lines().filter(QStringLiteral("CSettingsDIalog::save()"));
}

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void okStoresWhatWasEntered();
    void cancelStoresNothing();
    void changedPortIsAnsweredByABoxThatWaitsForNobody();
    void unknownModeChecksNothingAndIsStoredEmpty();
    void chosenPortGoesIntoTheField_data();
    void chosenPortGoesIntoTheField();
    void antennaEditorsAreUsedInTheDialogAndGoBack();
    void tabVisitsTheFieldsFromTopToBottom();

    void typedCaptionGoesToTheSelectedCopyOnly();

private:
    template <typename T>
    T *child(const char *name) const
    {
        return m_dialog->findChild<T *>(QString(name));
    }
    QLineEdit *nameField() const { return child<QLineEdit>("stackNameLineEdit"); }
    QLineEdit *portField() const { return child<QLineEdit>("serialPortLineEdit"); }
    bool openDialog() const;

    std::unique_ptr<QWidget> m_window;
    CSettingsDIalog *m_dialog = nullptr;
};

void TestDialogs::init()
{
    QFile::remove(CSettings::settingsFilePath());
    m_window = std::make_unique<QWidget>();
    m_window->setLayout(new QVBoxLayout);
    m_dialog = new CSettingsDIalog(m_window.get());
    m_window->show();
}

void TestDialogs::cleanup()
{
    m_window.reset();
    QFile::remove(CSettings::settingsFilePath());
}

bool TestDialogs::openDialog() const
{
    // Without it a window that was active when it was hidden does not become active again here.
    m_window->activateWindow();
    m_dialog->load();
    m_dialog->open();
    return becomesActive(m_dialog);
}

void TestDialogs::okStoresWhatWasEntered()
{
    CSettings stored;
    stored.relayBoxId = 5;
    stored.memories[0] = QStringLiteral("45");
    stored.save();
    QVERIFY(openDialog());
    QCOMPARE(child<QLabel>("relayIdLabel")->text(), QStringLiteral("5"));
    QCOMPARE(m_dialog->interfaceModeName(), QStringLiteral("extended"));
    retype(nameField(), QStringLiteral("Shack"));
    QTest::mouseClick(child<QRadioButton>("superMiniUIRadioButton"), Qt::LeftButton, {}, {5, 8});
    const LogLines log;
    press(*m_dialog, QDialogButtonBox::Ok);
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(QApplication::activeModalWidget(), nullptr);
    QCOMPARE(linesOfSave(log),
             QStringList({"CSettingsDIalog::save() - IN", "CSettingsDIalog::save() - OUT"}));
    const CSettings settings;
    QCOMPARE(settings.relayBoxName, QStringLiteral("Shack"));
    QCOMPARE(settings.interfaceMode, QStringLiteral("supermini"));
    QCOMPARE(settings.comPortName, QStringLiteral("COM1"));
    QCOMPARE(settings.relayBoxId, 5);
    QCOMPARE(settings.memories[0], QStringLiteral("45"));
}

void TestDialogs::cancelStoresNothing()
{
    QVERIFY(openDialog());
    retype(portField(), QStringLiteral("COM9"));
    press(*m_dialog, QDialogButtonBox::Cancel);
    QVERIFY(!m_dialog->isVisible());
    QVERIFY(!QFile::exists(CSettings::settingsFilePath()));
}

void TestDialogs::changedPortIsAnsweredByABoxThatWaitsForNobody()
{
    QVERIFY(openDialog());
    retype(portField(), QStringLiteral("COM7"));
    const LogLines log;
    QTest::keyClick(portField(), Qt::Key_Return);
    QCOMPARE(CSettings().comPortName, QStringLiteral("COM7"));
    QCOMPARE(linesOfSave(log), QStringList("CSettingsDIalog::save() - IN"));
    auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    QVERIFY(box);
    QCOMPARE(box->parentWidget(), m_window.get());
    QCOMPARE(box->windowTitle(), QStringLiteral("Hold on"));
    QCOMPARE(box->text(),
             QStringLiteral("As you changed serial port name, these settings will take effect only "
                            "after this software restarts."));
    QCOMPARE(box->standardButtons(), QMessageBox::Ok);
    QTimer::singleShot(0, box, [box] { QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton); });
    QTRY_COMPARE(QApplication::activeModalWidget(), nullptr);
    QCOMPARE(linesOfSave(log).size(), 1);
}

void TestDialogs::unknownModeChecksNothingAndIsStoredEmpty()
{
    CSettings settings;
    settings.interfaceMode = QStringLiteral("mini");
    settings.save();
    m_dialog->load();
    QCOMPARE(m_dialog->interfaceModeName(), QStringLiteral("mini"));
    settings.interfaceMode = QStringLiteral("Mini");
    settings.save();
    QVERIFY(openDialog());
    const QList<QRadioButton *> modes = m_dialog->findChildren<QRadioButton *>();
    QCOMPARE(modes.size(), 3);
    for (const QRadioButton *mode : modes)
        QVERIFY2(!mode->isChecked(), qPrintable(mode->text()));
    press(*m_dialog, QDialogButtonBox::Ok);
    QCOMPARE(CSettings().interfaceMode, QString());
}

void TestDialogs::chosenPortGoesIntoTheField_data()
{
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("port");
    QTest::newRow("a row and OK") << "click, ok"
                                  << "ttyTest7";
    QTest::newRow("a row clicked twice") << "double click"
                                         << "ttyTest7";
    QTest::newRow("a row by keyboard") << "keys"
                                       << "ttyTest7";
    QTest::newRow("OK alone") << "ok"
                              << "";
    QTest::newRow("a row and the window closed") << "click, close"
                                                 << "COM1";
}

void TestDialogs::chosenPortGoesIntoTheField()
{
    QFETCH(QString, what);
    QFETCH(QString, port);
    QVERIFY(openDialog());
    QTest::mouseClick(child<QPushButton>("serialPortButton"), Qt::LeftButton);
    QPointer<QWidget> chooser = QApplication::activeModalWidget();
    QVERIFY(qobject_cast<CSerialPortSelectionDialog *>(chooser));
    QVERIFY(becomesActive(chooser));
    auto *list = chooser->findChild<QListWidget *>();
    list->addItem(QStringLiteral("ttyTest7"));
    const QPoint row = list->visualItemRect(list->item(list->count() - 1)).center();
    if (what.contains(QLatin1String("click")))
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row);
    if (what == QLatin1String("double click"))
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row);
    if (what == QLatin1String("keys")) {
        QTest::keyClick(chooser->focusWidget(), Qt::Key_Tab);
        QVERIFY(list->item(0)->isSelected());
        QTest::keyClick(chooser->focusWidget(), Qt::Key_End);
        QTest::keyClick(chooser->focusWidget(), Qt::Key_Return);
    }
    if (what.endsWith(QLatin1String("ok")))
        QTest::mouseClick(chooser->findChild<QPushButton *>(QStringLiteral("okButton")), Qt::LeftButton);
    if (what.endsWith(QLatin1String("close")))
        chooser->close();
    QTRY_VERIFY(!chooser);
    QCOMPARE(portField()->text(), port);
}

void TestDialogs::antennaEditorsAreUsedInTheDialogAndGoBack()
{
    auto *editors = new QTabWidget;
    auto *editor = new QLineEdit;
    editors->addTab(editor, QStringLiteral("A1"));
    m_window->layout()->addWidget(editors);
    m_dialog->setAntennaEditors(editors);
    QVERIFY(openDialog());
    QTRY_VERIFY(editor->isVisible());
    const QSignalSpy confirmed(editor, &QLineEdit::returnPressed);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        editor->setFocus();
        QTest::keyClick(editor, key);
        QVERIFY(m_dialog->isVisible());
    }
    QCOMPARE(confirmed.count(), 2);
    nameField()->setFocus();
    QTest::keyClick(nameField(), Qt::Key_Return);
    QVERIFY(!m_dialog->isVisible());
    m_window->layout()->addWidget(m_dialog->takeAntennaEditors());
    QTRY_VERIFY(editor->isVisible());
    QCOMPARE(editor->window(), m_window.get());
    QCOMPARE(m_dialog->takeAntennaEditors(), nullptr);
}

void TestDialogs::tabVisitsTheFieldsFromTopToBottom()
{
    auto *editor = new QLineEdit;
    editor->setObjectName(QStringLiteral("editor"));
    m_dialog->setAntennaEditors(editor);
    QVERIFY(openDialog());
    const QStringList expected{"stackNameLineEdit",
                               "serialPortLineEdit",
                               "serialPortButton",
                               "extendedUIRadioButton",
                               "editor",
                               "OK",
                               "Cancel",
                               "stackNameLineEdit"};
    for (const QString &name : expected) {
        QWidget *widget = m_dialog->focusWidget();
        const auto *button = qobject_cast<QPushButton *>(widget);
        QCOMPARE(widget->objectName().isEmpty() && button ? button->text() : widget->objectName(), name);
        QTest::keyClick(widget, Qt::Key_Tab);
    }
}

void TestDialogs::typedCaptionGoesToTheSelectedCopyOnly()
{
    CAntennaButton first(QStringLiteral("One")), second(QStringLiteral("Two\nlines")),
        radio(QStringLiteral("Rig"));
    radio.resize(90, 40);
    radio.setColor(Qt::green);
    CAntennaLabelEditorDialog dialog({&first, &second}, {&radio});
    dialog.show();
    QVERIFY(becomesActive(&dialog));
    const std::vector<CAntennaButton *> antennas = dialog.antennaButtons();
    CAntennaButton *radioCopy = dialog.radioButtons().front();
    auto *text = dialog.findChild<QPlainTextEdit *>();
    QCOMPARE(radioCopy->minimumSize(), QSize(90, 40));
    QCOMPARE(radioCopy->color(), QColor(Qt::green));

    QTest::keyClicks(text, QStringLiteral("nothing is selected"));
    QCOMPARE(antennas[0]->text() + antennas[1]->text() + radioCopy->text(),
             QStringLiteral("OneTwo\nlinesRig"));
    QTest::mouseClick(antennas[1], Qt::LeftButton);
    QCOMPARE(text->toPlainText(), QStringLiteral("Two\nlines"));
    QTest::keyClicks(dialog.focusWidget(), QStringLiteral(" "));
    QCOMPARE(antennas[1]->text(), QStringLiteral("Two\nlines "));
    QTest::mouseClick(radioCopy, Qt::LeftButton);
    QTest::mouseClick(radioCopy, Qt::LeftButton);
    QVERIFY(radioCopy->isChecked() && !antennas[0]->isChecked() && !antennas[1]->isChecked());
    text->selectAll();
    QTest::keyClick(text, Qt::Key_Delete);
    QCOMPARE(radioCopy->text(), QString());
    QCOMPARE(antennas[1]->text(), QStringLiteral("Two\nlines "));
    press(dialog, QDialogButtonBox::Ok);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(second.text() + radio.text(), QStringLiteral("Two\nlinesRig"));
}

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
