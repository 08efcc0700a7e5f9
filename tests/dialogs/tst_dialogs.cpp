#include "dialogs/antennalabeleditordialog.h"
#include "dialogs/serialportselectiondialog.h"
#include "dialogs/settingsdialog.h"
#include "settings/settings.h"
#include "widgets/antennabutton.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTest>
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

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QFile::remove(CSettings::settingsFilePath());
        m_window = std::make_unique<QWidget>();
        m_window->setLayout(new QVBoxLayout);
        m_dialog = new CSettingsDIalog(m_window.get());
        m_window->show();
    }

    void cleanup()
    {
        m_window.reset();
        QFile::remove(CSettings::settingsFilePath());
    }

    void okStoresWhatWasEntered()
    {
        CSettings stored;
        stored.relayBoxId = 5;
        stored.memories[0] = QStringLiteral("45");
        stored.save();
        QVERIFY(openDialog());
        retype(portField(), QStringLiteral("COM9"));
        press(*m_dialog, QDialogButtonBox::Cancel);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(CSettings().comPortName, QStringLiteral("COM1"));

        QVERIFY(openDialog());
        retype(nameField(), QStringLiteral("Shack"));
        QTest::mouseClick(child<QRadioButton>("superMiniUIRadioButton"), Qt::LeftButton, {}, {5, 8});
        press(*m_dialog, QDialogButtonBox::Ok);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(QApplication::activeModalWidget(), nullptr);
        const CSettings settings;
        QCOMPARE(settings.relayBoxName, QStringLiteral("Shack"));
        QCOMPARE(settings.interfaceMode, QStringLiteral("supermini"));
        QCOMPARE(settings.comPortName, QStringLiteral("COM1"));
        QCOMPARE(settings.relayBoxId, 5);
        QCOMPARE(settings.memories[0], QStringLiteral("45"));
    }

    void changedPortIsAnsweredByABoxThatWaitsForNobody()
    {
        QVERIFY(openDialog());
        retype(portField(), QStringLiteral("COM7"));
        QTest::keyClick(portField(), Qt::Key_Return);
        QCOMPARE(CSettings().comPortName, QStringLiteral("COM7"));
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        QCOMPARE(box->text(),
                 QStringLiteral("As you changed serial port name, these settings will take effect only "
                                "after this software restarts."));
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        QTRY_COMPARE(QApplication::activeModalWidget(), nullptr);
    }

    void unknownModeChecksNothingAndIsStoredEmpty()
    {
        CSettings settings;
        settings.interfaceMode = QStringLiteral("Mini");
        settings.save();
        QVERIFY(openDialog());
        const QList<QRadioButton *> modes = m_dialog->findChildren<QRadioButton *>();
        for (const QRadioButton *mode : modes)
            QVERIFY2(!mode->isChecked(), qPrintable(mode->text()));
        press(*m_dialog, QDialogButtonBox::Ok);
        QCOMPARE(CSettings().interfaceMode, QString());
    }

    void chosenPortGoesIntoTheField_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("port");
        QTest::newRow("a row and OK") << QStringLiteral("click") << QStringLiteral("ttyTest7");
        QTest::newRow("a row by keyboard") << QStringLiteral("keys") << QStringLiteral("ttyTest7");
        QTest::newRow("OK alone") << QString() << QString();
        QTest::newRow("a row and the window closed") << QStringLiteral("close") << QStringLiteral("COM1");
    }
    void chosenPortGoesIntoTheField()
    {
        QFETCH(QString, how);
        QVERIFY(openDialog());
        QTest::mouseClick(child<QPushButton>("serialPortButton"), Qt::LeftButton);
        QPointer<QWidget> chooser = QApplication::activeModalWidget();
        QVERIFY(qobject_cast<CSerialPortSelectionDialog *>(chooser));
        QVERIFY(becomesActive(chooser));
        auto *list = chooser->findChild<QListWidget *>();
        list->addItem(QStringLiteral("ttyTest7"));
        const QPoint row = list->visualItemRect(list->item(list->count() - 1)).center();
        if (how == QLatin1String("keys")) {
            QTest::keyClick(chooser->focusWidget(), Qt::Key_Tab);
            QTest::keyClick(chooser->focusWidget(), Qt::Key_End);
            QTest::keyClick(chooser->focusWidget(), Qt::Key_Return);
        } else {
            if (!how.isEmpty())
                QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row);
            if (how == QLatin1String("close"))
                chooser->close();
            else
                QTest::mouseClick(chooser->findChild<QPushButton *>(QStringLiteral("okButton")),
                                  Qt::LeftButton);
        }
        QTRY_VERIFY(!chooser);
        QTEST(portField()->text(), "port");
    }

    void antennaEditorsAreUsedInTheDialogAndGoBack()
    {
        auto *editor = new QLineEdit;
        m_window->layout()->addWidget(editor);
        m_dialog->setAntennaEditors(editor);
        QVERIFY(openDialog());
        QTRY_VERIFY(editor->isVisible());
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
            editor->setFocus();
            QTest::keyClick(editor, key);
            QVERIFY(m_dialog->isVisible());
        }
        nameField()->setFocus();
        QTest::keyClick(nameField(), Qt::Key_Return);
        QVERIFY(!m_dialog->isVisible());
        m_window->layout()->addWidget(m_dialog->takeAntennaEditors());
        QTRY_VERIFY(editor->isVisible());
        QCOMPARE(editor->window(), m_window.get());
    }

    void typedCaptionGoesToTheSelectedCopyOnly()
    {
        CAntennaButton first(QStringLiteral("One")), second(QStringLiteral("Two\nlines")),
            radio(QStringLiteral("Rig"));
        CAntennaLabelEditorDialog dialog({&first, &second}, {&radio});
        dialog.show();
        QVERIFY(becomesActive(&dialog));
        const std::vector<CAntennaButton *> antennas = dialog.antennaButtons();
        CAntennaButton *radioCopy = dialog.radioButtons().front();
        auto *text = dialog.findChild<QPlainTextEdit *>();

        QTest::keyClicks(text, QStringLiteral("nothing is selected"));
        QTest::mouseClick(antennas[1], Qt::LeftButton);
        QTest::keyClicks(dialog.focusWidget(), QStringLiteral(" "));
        QTest::mouseClick(radioCopy, Qt::LeftButton);
        QTest::mouseClick(radioCopy, Qt::LeftButton);
        QVERIFY(radioCopy->isChecked() && !antennas[0]->isChecked() && !antennas[1]->isChecked());
        text->selectAll();
        QTest::keyClick(text, Qt::Key_Delete);
        const QStringList captions{antennas[0]->text(), antennas[1]->text(), radioCopy->text()};
        QCOMPARE(captions, (QStringList{"One", "Two\nlines ", ""}));
        QCOMPARE(second.text(), QStringLiteral("Two\nlines"));
    }

private:
    template <typename T>
    T *child(const char *name) const
    {
        return m_dialog->findChild<T *>(QString(name));
    }
    QLineEdit *nameField() const { return child<QLineEdit>("stackNameLineEdit"); }
    QLineEdit *portField() const { return child<QLineEdit>("serialPortLineEdit"); }
    bool openDialog() const
    {
        // Without it a window that was active when it was hidden does not become active again here.
        m_window->activateWindow();
        m_dialog->load();
        m_dialog->open();
        return becomesActive(m_dialog);
    }

    std::unique_ptr<QWidget> m_window;
    CSettingsDIalog *m_dialog = nullptr;
};

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
