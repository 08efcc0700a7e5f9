// SPDX-License-Identifier: MIT
#include "dialogs/serialportselectiondialog.h"
#include "dialogs/settingsdialog.h"
#include "settings/settings.h"
#include "settings/settingsfile.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

namespace {

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
        QFile::remove(SettingsFile::path());
        m_window = std::make_unique<QWidget>();
        m_dialog = new CSettingsDIalog(m_window.get());
        m_window->show();
    }

    void cleanup() { m_window.reset(); }

    void okStoresWhatWasEntered()
    {
        CSettings stored;
        stored.memories[0] = "45";
        stored.save();
        QVERIFY(openDialog());
        retype(portField(), "COM9");
        press(QDialogButtonBox::Cancel);
        QCOMPARE(CSettings().comPortName, QString("COM1"));

        QVERIFY(openDialog());
        retype(nameField(), "Shack");
        QTest::mouseClick(child<QRadioButton>("superMiniUIRadioButton"), Qt::LeftButton, {}, {5, 8});
        press(QDialogButtonBox::Ok);
        QVERIFY(!m_dialog->isVisible() && !QApplication::activeModalWidget());
        const CSettings settings;
        QCOMPARE(settings.interfaceMode, QString("supermini"));
        QCOMPARE(settings.relayBoxName, QString("Shack"));
        QCOMPARE(settings.comPortName, QString("COM1"));
        QCOMPARE(settings.memories[0], QString("45"));
    }

    void changedPortIsAnsweredByABoxThatWaitsForNobody()
    {
        QVERIFY(openDialog());
        retype(portField(), "COM7");
        QTest::keyClick(portField(), Qt::Key_Return);
        QCOMPARE(CSettings().comPortName, QString("COM7"));
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        QTRY_COMPARE(QApplication::activeModalWidget(), nullptr);
    }

    void chosenPortGoesIntoTheField()
    {
        QVERIFY(openDialog());
        for (bool clicked : {true, false}) { // OK alone chooses none
            QTest::mouseClick(child<QPushButton>("serialPortButton"), Qt::LeftButton);
            QPointer<QWidget> chooser = QApplication::activeModalWidget();
            QVERIFY(qobject_cast<CSerialPortSelectionDialog *>(chooser) && becomesActive(chooser));
            auto *list = chooser->findChild<QListWidget *>();
            list->addItem("ttyTest7");
            const QPoint row = list->visualItemRect(list->item(list->count() - 1)).center();
            if (clicked)
                QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row);
            QTest::mouseClick(chooser->findChild<QPushButton *>("okButton"), Qt::LeftButton);
            QTRY_VERIFY(!chooser);
            QCOMPARE(portField()->text(), QString(clicked ? "ttyTest7" : ""));
        }
    }

private:
    template <typename T>
    T *child(const char *name) const
    {
        return m_dialog->findChild<T *>(QString(name));
    }
    void press(QDialogButtonBox::StandardButton button) const
    {
        QTest::mouseClick(m_dialog->findChild<QDialogButtonBox *>()->button(button), Qt::LeftButton);
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
