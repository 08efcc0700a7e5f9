#include "settings/relayboxswap.h"
#include "settings/settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>

namespace {

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(contents);
}

/// Saves a configuration; names of one length give files of one size.
void saveConfiguration(int relayBoxId, const QString &name)
{
    CSettings settings;
    settings.relayBoxId = relayBoxId;
    settings.relayBoxName = QString::number(relayBoxId);
    settings.names[0] = name;
    settings.save();
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    /// Leaves no settings file beside the test.
    void init()
    {
        QDir dir(QCoreApplication::applicationDirPath());
        const QFileInfoList left = dir.entryInfoList({QStringLiteral("VextralRemoteControl.ini*")},
                                                     QDir::Files | QDir::Dirs | QDir::System | QDir::Hidden);
        for (const QFileInfo &file : left) {
            if (file.isDir())
                QVERIFY(QDir(file.filePath()).removeRecursively());
            else
                QVERIFY(QFile::remove(file.filePath()));
        }
    }

    void cleanupTestCase() { init(); }

    void firstSaveWritesEveryDefault()
    {
        CSettings().save();
        QStringList expected{"[General]",
                             "comPortName=COM1",
                             "interfaceMode=extended",
                             "relayBoxId=1",
                             "relayBoxName=",
                             "extendedSize=@Size(441 473)",
                             "miniSize=@Size(371 160)",
                             "superMiniSize=@Size(371 110)"};
        for (int n = 1; n <= 10; ++n) {
            for (const char *line : {"Color_%1=4278190335", "Enabled%1=false", "Angles%1=0",
                                     "Names%1=Antena%1", "RadioNames%1=Radio %1", "Memories%1=M%1"})
                expected << QString::fromLatin1(line).arg(n);
            expected << QStringLiteral("RotorID_%1=%2").arg(n).arg(n <= 2 ? n - 1 : -1);
        }
        QStringList lines =
            QString::fromLatin1(read(CSettings::settingsFilePath())).split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size() - 1, 77);
        lines.sort();
        expected.sort();
        QCOMPARE(lines, expected);
    }

    void textSurvivesSaveAndLoad()
    {
        for (const char *text :
             {"", "  blanks around ", "東京 ação هوائي 📡", "two\nlines\tand", "a,b;c=d[e]", "\"quoted\"",
              "back\\slash", "%41 %1 &amp;", "@Size(1 2)", "@Invalid()", "045", "true"}) {
            CSettings settings;
            settings.relayBoxName = settings.names[0] = QString::fromUtf8(text);
            settings.save();
            QCOMPARE(CSettings().relayBoxName, QString::fromUtf8(text));
            QCOMPARE(CSettings().names[0], QString::fromUtf8(text));
        }
    }

    void colourKeepsItsAlpha()
    {
        CSettings settings;
        settings.colors[9] = QColor(255, 160, 47, 128);
        settings.save();
        QVERIFY(read(CSettings::settingsFilePath()).contains("\nColor_10=2164236335\n"));
        QCOMPARE(CSettings().colors[9], QColor(255, 160, 47, 128));
    }

    void valuesThatDoNotConvertBecomeZeroOfTheirKind()
    {
        write(CSettings::settingsFilePath(),
              "[General]\nrelayBoxId=seven\nColor_1=-5\nEnabled1=no\nEnabled2=0\nAngles1=north\n"
              "RotorID_1=first\nNames1=A, B\nextendedSize=441x473\n");
        const CSettings settings;
        QCOMPARE(settings.relayBoxId, 0);
        QCOMPARE(settings.colors[0].rgba(), 0U);
        QCOMPARE(settings.enabled[0], true);
        QCOMPARE(settings.enabled[1], false);
        QCOMPARE(settings.angles[0], 0.0);
        QCOMPARE(settings.rotorIds[0], 0);
        QCOMPARE(settings.names[0], QString());
        QVERIFY(!settings.extendedSize.isValid());
    }

    void brokenFileGivesDefinedSettings_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::newRow("zeros") << QByteArray(4096, '\0');
        QTest::newRow("half written") << QByteArray("[General]\nAngles1=0\nNames10=Beam\nNames2");
        QTest::newRow("no section end") << QByteArray("[General\ncomPortName");
        QTest::newRow("a directory in its place") << QByteArray();
    }
    void brokenFileGivesDefinedSettings()
    {
        QFETCH(QByteArray, contents);
        if (contents.isNull())
            QVERIFY(QDir().mkpath(CSettings::settingsFilePath()));
        else
            write(CSettings::settingsFilePath(), contents);
        CSettings settings;
        QCOMPARE(settings.comPortName, QStringLiteral("COM1"));
        QCOMPARE(settings.extendedSize, QSize(441, 473));
        settings.names[0] = QStringLiteral("Beam");
        settings.save();
        QVERIFY(CSettings().names[0] == QLatin1String("Beam") || contents.isNull());
    }

    void newBoxTakesTheConfigurationOver()
    {
        saveConfiguration(1, QStringLiteral("Beam"));
        const QByteArray first = read(CSettings::settingsFilePath());
        const CSettings settings = swapRelayBoxSettings(1, 7);
        QCOMPARE(settings.relayBoxName, QStringLiteral("7"));
        QCOMPARE(settings.names[0], QStringLiteral("Beam"));
        QCOMPARE(CSettings().relayBoxId, 7);
        QCOMPARE(read(CSettings::relayBoxFilePath(1)), first);
    }

    void eachBoxGetsItsOwnConfigurationBack()
    {
        saveConfiguration(1, QStringLiteral("100"));
        swapRelayBoxSettings(1, 2);
        // Files of one size that are changed within one clock tick look alike to a cache.
        for (int i = 0; i < 40; ++i) {
            const QString second = QString::number(500 + i);
            saveConfiguration(2, second);
            QCOMPARE(swapRelayBoxSettings(2, 1).names[0], QString::number(100 + i));
            saveConfiguration(1, QString::number(101 + i));
            QCOMPARE(swapRelayBoxSettings(1, 2).names[0], second);
            QCOMPARE(CSettings().relayBoxId, 2);
        }
    }

    void troubleLosesNoConfiguration_data()
    {
        QTest::addColumn<QByteArray>("keptFile");
        QTest::addColumn<QString>("name");
        QTest::newRow("kept file names another box")
            << QByteArray("[General]\nrelayBoxId=9\nNames1=Kept\n") << "Kept";
        QTest::newRow("kept file is garbage") << QByteArray("\x01\xFF[[=\n\x80") << "Antena1";
        QTest::newRow("kept file cannot be read") << QByteArray() << "Beam";
    }
    void troubleLosesNoConfiguration()
    {
        QFETCH(QByteArray, keptFile);
        QFETCH(QString, name);
        saveConfiguration(1, QStringLiteral("Beam"));
        if (keptFile.isNull())
            QVERIFY(QDir().mkpath(CSettings::relayBoxFilePath(2)));
        else
            write(CSettings::relayBoxFilePath(2), keptFile);
        QCOMPARE(swapRelayBoxSettings(1, 2).names[0], name);
        QCOMPARE(CSettings().relayBoxId, 2);
        const CSettings back = swapRelayBoxSettings(2, 1);
        QCOMPARE(back.names[0], QStringLiteral("Beam"));
        QCOMPARE(back.relayBoxId, 1);
    }

    void aConfigurationThatCannotBeKeptAsideStays()
    {
        saveConfiguration(1, QStringLiteral("Beam"));
        QVERIFY(QDir().mkpath(CSettings::relayBoxFilePath(1))); // over which nobody copies a file
        const QByteArray before = read(CSettings::settingsFilePath());
        QCOMPARE(swapRelayBoxSettings(1, 2).relayBoxId, 2);
        QCOMPARE(read(CSettings::settingsFilePath()), before);
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
