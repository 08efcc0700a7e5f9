// SPDX-License-Identifier: MIT
#include "app/resources.h"
#include "dialogs/stationmapdialog.h"
#include "stationmap/stationmapfile.h"
#include "support/scriptedwindow.h"
#include "widgets/map/azimuthalmapimage.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <algorithm>

namespace {

constexpr int patienceMs = 30000; // a map takes tenths of a second, on a busy machine seconds

} // namespace

class TestStationMapDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { initResources(); }
    void init() { removeSettingsAndMaps(); }

    void whatIsTypedIsCheckedAndFillsInTheOtherFields()
    {
        struct Row
        {
            QString field, text;
            QString shown; // locator | latitude | longitude; "!" is a message beside the field
            bool isGood;
        };
        for (const Row &row :
             {Row{"locator", "gg66rp", "gg66rp|-23.3542|-46.5417", true},
              Row{"locator", "gg66r", "gg66r!||", false}, Row{"locator", "", "||", false},
              Row{"latitude", "35 39 N", "PM95up|35 39 N|139.7083", true},
              Row{"latitude", "91", "|91!|139.7083", false}, Row{"latitude", "", "|!|139.7083", false},
              Row{"longitude", "-180", "AM05ap|35.6458|-180", true},
              Row{"longitude", "39 E W", "|35.6458|39 E W!", false}}) {
            CStationMapDialog dialog("/nowhere/map.png");
            QVERIFY(!okButton(dialog)->isEnabled());
            type(dialog, "locator", "PM95up");
            QVERIFY(okButton(dialog)->isEnabled());
            type(dialog, row.field, row.text);
            QStringList fields;
            for (const char *name : {"locator", "latitude", "longitude"}) {
                const QLineEdit *edit = editOf(dialog, name);
                fields << edit->text() + (edit->accessibleDescription().isEmpty() ? "" : "!");
            }
            QCOMPARE(fields.join('|'), row.shown);
            QCOMPARE(okButton(dialog)->isEnabled(), row.isGood);
            const QList<QLabel *> labels = dialog.findChildren<QLabel *>();
            const auto explains = [](const QLabel *label) { return label->text().contains("such as"); };
            QCOMPARE(std::any_of(labels.begin(), labels.end(), explains), row.shown.contains('!'));
        }
    }

    void okPutsTheMapInPlaceAndTheWindowShowsIt()
    {
        const QString installed = AzimuthalMapImage::installedPath();
        ScriptedWindow window;
        const QImage before = window.map()->grab().toImage();
        openFromMenu(window);
        auto *dialog = window.findChild<CStationMapDialog *>();
        QVERIFY(dialog && dialog->isModal());
        type(*dialog, "locator", "GG66rp");
        QTest::keyClick(editOf(*dialog, "locator"), Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(!window.findChild<CStationMapDialog *>(), patienceMs);
        QCOMPARE(StationMapFile::read(installed)->caption, QString("GG66rp"));
        QVERIFY(window.map()->grab().toImage() != before);
        QVERIFY(window.get<QLabel>("mapNoticeLabel")->isHidden());

        openFromMenu(window);
        dialog = window.findChild<CStationMapDialog *>();
        QCOMPARE(editOf(*dialog, "locator")->text(), QString("GG66rp"));
        QCOMPARE(editOf(*dialog, "latitude")->text(), QString("-23.3542"));
        QCOMPARE(editOf(*dialog, "caption")->text(), QString());
        // Cancelled while it is being drawn.
        type(*dialog, "caption", "PY2ABC");
        okButton(*dialog)->click();
        QVERIFY(!editOf(*dialog, "locator")->isEnabled());
        QTest::keyClick(dialog, Qt::Key_Escape);
        QTRY_VERIFY_WITH_TIMEOUT(!window.findChild<CStationMapDialog *>(), patienceMs);
        QCOMPARE(StationMapFile::read(installed)->caption, QString("GG66rp"));
    }

    void aMapThatCannotBeWrittenIsToldAndTheDialogStays()
    {
        CStationMapDialog dialog("/nowhere/map.png");
        dialog.show();
        type(dialog, "locator", "GG66rp");
        okButton(dialog)->click();
        QVERIFY(!okButton(dialog)->isEnabled());
        QTRY_VERIFY_WITH_TIMEOUT(okButton(dialog)->isEnabled(), patienceMs);
        QVERIFY(dialog.isVisible());
        QVERIFY(dialog.findChild<QLabel *>("statusLabel")->text().contains("cannot be written"));
    }

    void aModelWithoutAMapHasNoEntry()
    {
        ScriptedWindow window([](ScriptedBox &box) { box.mapSupport = false; });
        QVERIFY(!window.get<QAction>("actionStationMap"));
    }

private:
    static void openFromMenu(ScriptedWindow &window) { window.get<QAction>("actionStationMap")->trigger(); }

    static QLineEdit *editOf(const QDialog &dialog, const QString &field)
    {
        return dialog.findChild<QLineEdit *>(field + "Edit");
    }

    static void type(const QDialog &dialog, const QString &field, const QString &text)
    {
        QLineEdit *edit = editOf(dialog, field);
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }

    static QPushButton *okButton(const QDialog &dialog)
    {
        return dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    }
};

QTEST_MAIN(TestStationMapDialog)
#include "tst_stationmapdialog.moc"
