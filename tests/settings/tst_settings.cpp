// SPDX-License-Identifier: MIT
#include "settings/settings.h"
#include "settings/settingsfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>

namespace {

/// Makes a folder of it when there are no contents.
void write(const QString &path, const QByteArray &contents)
{
    QFile file(path);
    if (contents.isNull())
        QVERIFY(QDir().mkpath(path));
    else
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size());
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "missing";
}

/// Saves a configuration; names of one length give files of one size.
void saveConfiguration(int relayBoxId, const QString &name)
{
    CSettings settings;
    settings.relayBoxId = relayBoxId;
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
        for (const QString &left : dir.entryList({"VextralRemoteControl.ini*"}))
            QVERIFY(dir.remove(left) || QDir(dir.filePath(left)).removeRecursively());
    }

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
                expected << QString(line).arg(n);
            expected << QString("RotorID_%1=%2").arg(n).arg(n <= 2 ? n - 1 : -1);
        }
        QFile file(SettingsFile::path());
        QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
        QStringList lines = QString(file.readAll()).split('\n', Qt::SkipEmptyParts);
        QCOMPARE(lines.size() - 1, 77);
        lines.sort();
        expected.sort();
        QCOMPARE(lines, expected);
    }

    void textAndColourSurviveSaveAndLoad()
    {
        const QColor translucent(255, 160, 47, 128);
        for (const QString text :
             {"", "  blanks around ", "東京 ação هوائي 📡", "two\nlines\tand", "a,b;c=d[e]", "\"quoted\"",
              "back\\slash", "%41 %1 &amp;", "@Size(1 2)", "@Invalid()", "045", "true"}) {
            CSettings settings;
            settings.names[0] = text;
            settings.colors[9] = translucent;
            settings.save();
            QCOMPARE(CSettings().names[0], text);
            QCOMPARE(CSettings().colors[9], translucent);
        }
    }

    void brokenFileGivesDefinedSettings()
    {
        for (const QByteArray &contents :
             {QByteArray(4096, '\0'), QByteArray("[General]\nAngles1=0\nNames10=Beam\nNames2"),
              QByteArray("[General\ncomPortName"), QByteArray()}) {
            init();
            write(SettingsFile::path(), contents);
            QCOMPARE(CSettings().comPortName, QString("COM1"));
            QCOMPARE(CSettings().extendedSize, QSize(441, 473));
            saveConfiguration(1, "Beam");
            QVERIFY(CSettings().names[0] == "Beam" || contents.isNull());
        }
    }

    void eachBoxGetsItsOwnConfigurationBack()
    {
        saveConfiguration(1, "100");
        QCOMPARE(SettingsFile::ofThisProgram().exchange(1, 2).names[0],
                 QString("100")); // a new box takes it over
        QCOMPARE(CSettings().relayBoxName, QString("2"));
        // Files of one size that are changed within one clock tick look alike to a cache.
        for (int i = 0; i < 40; ++i) {
            const QString second = QString::number(500 + i);
            saveConfiguration(2, second);
            QCOMPARE(SettingsFile::ofThisProgram().exchange(2, 1).names[0], QString::number(100 + i));
            saveConfiguration(1, QString::number(101 + i));
            QCOMPARE(SettingsFile::ofThisProgram().exchange(1, 2).names[0], second);
            QCOMPARE(CSettings().relayBoxId, 2);
        }
    }

    void troubleLosesNoConfiguration()
    {
        const std::pair<QByteArray, QString> keptFiles[] = {
            {"[General]\nrelayBoxId=9\nNames1=Kept\n", "Kept"},
            {"\x01\xFF[[=\n\x80", "Antena1"},
            {QByteArray(), "Beam"}}; // cannot be read
        for (const auto &[contents, name] : keptFiles) {
            init();
            saveConfiguration(1, "Beam");
            write(SettingsFile::keptPath(2), contents);
            QCOMPARE(SettingsFile::ofThisProgram().exchange(1, 2).names[0], name);
            QCOMPARE(CSettings().relayBoxId, 2);
            const CSettings back = SettingsFile::ofThisProgram().exchange(2, 1);
            QCOMPARE(back.names[0], QString("Beam"));
            QCOMPARE(back.relayBoxId, 1);
        }
    }

    /// Qt asks for a list of 905,969,664 elements, or follows a null pointer.
    void aFileThatCannotBeDecodedIsKeptAndTheDefaultsHold()
    {
        const QByteArray contents =
            "[General]\nNames1=Beam\n[Other]\nminiSize=@Variant(\\0\\0\\0\\x31\\x36\\0\\0\\0)\n";
        const QString kept = SettingsFile::path() + ".unreadable";
        SettingsFile &file = SettingsFile::ofThisProgram();
        write(SettingsFile::path(), contents);
        saveConfiguration(1, CSettings().names[0] + "!");
        QCOMPARE(CSettings().names[0], QString("Antena1!"));
        QCOMPARE(read(kept), contents);

        // The configuration of another box.
        write(SettingsFile::keptPath(2), contents);
        const CSettings other = file.exchange(1, 2);
        QCOMPARE(other.relayBoxId, 2);
        other.save();
        QCOMPARE(CSettings().names[0], QString("Antena1"));
        QCOMPARE(read(kept) + read(kept + "2"), contents + contents);
        QCOMPARE(file.exchange(2, 1).names[0], QString("Antena1!"));

        // Another program writes it while this one runs.
        write(SettingsFile::path(), contents);
        other.save();
        QCOMPARE(CSettings().relayBoxId, 2);
        QCOMPARE(read(kept + "3"), contents);
    }

    /// QSettings decodes each of the first ones; the last ones are texts.
    void objectsAreFoundBehindQuotesAndEscapes()
    {
        for (const char *value :
             {"@Variant(x)", " \"@Var\"iant(\"x)\"", "\\x40Variant(x)", "\\x0000100040\\126ariant(x)",
              "@V\\qariant(x)", "@Vari\\\r\nant(x)", "a, @DateTime(x)"}) {
            write(SettingsFile::path(), QByteArray("[General]\nNames1=") + value + '\n');
            QCOMPARE(CSettings().names[0], QString("Antena1"));
            QVERIFY2(!QFile::exists(SettingsFile::path()), value);
        }
        for (const QLatin1String text : {QLatin1String("@Variant(x)"), QLatin1String("10 m @Variant(x)"),
                                         QLatin1String("=@Var\"iant(x)")}) {
            saveConfiguration(1, text);
            QCOMPARE(CSettings().names[0], text);
        }
    }

    void aConfigurationThatCannotBeKeptAsideStays()
    {
        saveConfiguration(1, "Beam");
        write(SettingsFile::keptPath(1), QByteArray()); // a folder, over which nobody copies a file
        QCOMPARE(SettingsFile::ofThisProgram().exchange(1, 2).relayBoxId, 2);
        QCOMPARE(CSettings().relayBoxId, 1);
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
