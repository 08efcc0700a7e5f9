#include "settings/relayboxswap.h"
#include "settings/settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>

#include <functional>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

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

QStringList numbered(const QString &prefix, const std::function<QString(int)> &value)
{
    QStringList lines;
    for (int n = 1; n <= 10; ++n)
        lines << prefix + QString::number(n) + QLatin1Char('=') + value(n);
    return lines;
}

} // namespace

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanupTestCase() { init(); }
    void firstSaveWritesEveryDefault();
    void textSurvivesSaveAndLoad_data();
    void textSurvivesSaveAndLoad();
    void colourKeepsItsAlpha();
    void valuesThatDoNotConvertBecomeZeroOfTheirKind();
    void brokenFileGivesDefinedSettings_data();
    void brokenFileGivesDefinedSettings();
    void newBoxTakesTheConfigurationOver();
    void eachBoxGetsItsOwnConfigurationBack();
    void troubleLosesNoConfiguration_data();
    void troubleLosesNoConfiguration();
    void readOnlyFolderKeepsTheConfiguration();
};

/// Leaves no settings file beside the test.
void TestSettings::init()
{
    QDir dir(QCoreApplication::applicationDirPath());
    const QFileInfoList left = dir.entryInfoList({QStringLiteral("VextralRemoteControl.ini*")},
                                                 QDir::Files | QDir::Dirs | QDir::System | QDir::Hidden);
    for (const QFileInfo &file : left) {
        if (file.isDir() && !file.isSymLink())
            QVERIFY(QDir(file.filePath()).removeRecursively());
        else
            QVERIFY(QFile::remove(file.filePath()));
    }
}

void TestSettings::firstSaveWritesEveryDefault()
{
    CSettings().save();
    QStringList expected{"[General]", "comPortName=COM1", "interfaceMode=extended", "relayBoxId=1",
                         "relayBoxName="};
    expected << numbered("Color_", [](int) { return "4278190335"; });
    expected << numbered("Enabled", [](int) { return "false"; });
    expected << numbered("Angles", [](int) { return "0"; });
    expected << numbered("Names", [](int n) { return "Antena" + QString::number(n); });
    expected << numbered("RadioNames", [](int n) { return "Radio " + QString::number(n); });
    expected << numbered("RotorID_", [](int n) { return QString::number(n <= 2 ? n - 1 : -1); });
    expected << numbered("Memories", [](int n) { return "M" + QString::number(n); });
    expected << "extendedSize=@Size(441 473)"
             << "miniSize=@Size(371 160)"
             << "superMiniSize=@Size(371 110)";
    QStringList lines =
        QString::fromLatin1(read(CSettings::settingsFilePath())).split('\n', Qt::SkipEmptyParts);
#ifndef Q_OS_WIN
    // Only on Windows does QSettings keep the order in which keys are first written.
    lines.sort();
    expected.sort();
#endif
    QCOMPARE(lines, expected);
    QCOMPARE(lines.size() - 1, 77);
}

void TestSettings::textSurvivesSaveAndLoad_data()
{
    QTest::addColumn<QString>("text");
    const char *texts[] = {"",
                           "  blanks around ",
                           "ação",
                           "東京 アンテナ",
                           "Антенна",
                           "هوائي",
                           "📡 20m",
                           "two\nlines\tand",
                           "a,b;c=d[e]",
                           "\"quoted\"",
                           "back\\slash",
                           "%41 %1 &amp;",
                           "@Size(1 2)",
                           "@Invalid()",
                           "045",
                           "-1",
                           "true"};
    int number = 0;
    for (const char *text : texts)
        QTest::addRow("%d: %s", ++number, qUtf8Printable(QString::fromUtf8(text).simplified()))
            << QString::fromUtf8(text);
}

void TestSettings::textSurvivesSaveAndLoad()
{
    QFETCH(QString, text);
    CSettings settings;
    settings.comPortName = settings.relayBoxName = settings.interfaceMode = text;
    settings.names[0] = settings.memories[4] = settings.radioNames[9] = text;
    settings.save();
    const CSettings loaded;
    const QStringList values{loaded.comPortName, loaded.relayBoxName, loaded.interfaceMode,
                             loaded.names[0],    loaded.memories[4],  loaded.radioNames[9]};
    QCOMPARE(values, QStringList({text, text, text, text, text, text}));
}

void TestSettings::colourKeepsItsAlpha()
{
    CSettings settings;
    settings.colors[9] = QColor(255, 160, 47, 128);
    settings.save();
    QVERIFY(read(CSettings::settingsFilePath()).contains("\nColor_10=2164236335\n"));
    QCOMPARE(CSettings().colors[9], QColor(255, 160, 47, 128));
}

void TestSettings::valuesThatDoNotConvertBecomeZeroOfTheirKind()
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

void TestSettings::brokenFileGivesDefinedSettings_data()
{
    QTest::addColumn<QByteArray>("contents");
    QByteArray noise;
    for (int i = 0; i < 5000; ++i)
        noise += char((i * 7919) >> 3);
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("noise") << noise;
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("half written") << QByteArray("[General]\nAngles1=0\nNames10=Beam\nNames2");
    QTest::newRow("no section end") << QByteArray("[General\ncomPortName");
    QTest::newRow("a directory in its place") << QByteArray();
    QTest::newRow("a link that leads nowhere") << QByteArray();
}

void TestSettings::brokenFileGivesDefinedSettings()
{
    QFETCH(QByteArray, contents);
    const QString path = CSettings::settingsFilePath();
    if (QTest::currentDataTag() == QByteArray("a directory in its place"))
        QVERIFY(QDir().mkpath(path));
    else if (QTest::currentDataTag() == QByteArray("a link that leads nowhere"))
        QVERIFY(QFile::link(path, path));
    else
        write(path, contents);
    CSettings settings;
    QCOMPARE(settings.comPortName, QStringLiteral("COM1"));
    QCOMPARE(settings.extendedSize, QSize(441, 473));
    settings.names[0] = QStringLiteral("Beam");
    settings.save();
    const CSettings again;
    QCOMPARE(again.comPortName, QStringLiteral("COM1"));
    QVERIFY2(again.names[0] == QLatin1String("Beam") || contents.isNull(), qUtf8Printable(again.names[0]));
}

void TestSettings::newBoxTakesTheConfigurationOver()
{
    saveConfiguration(1, QStringLiteral("Beam"));
    const QByteArray first = read(CSettings::settingsFilePath());
    const CSettings settings = swapRelayBoxSettings(1, 7);
    QCOMPARE(settings.relayBoxId, 7);
    QCOMPARE(settings.relayBoxName, QStringLiteral("7"));
    QCOMPARE(settings.names[0], QStringLiteral("Beam"));
    QCOMPARE(CSettings().relayBoxId, 7);
    QCOMPARE(read(CSettings::relayBoxFilePath(1)), first);
}

void TestSettings::eachBoxGetsItsOwnConfigurationBack()
{
    saveConfiguration(1, QStringLiteral("One"));
    swapRelayBoxSettings(1, 2);
    saveConfiguration(2, QStringLiteral("Two"));
    // Files of one size that are changed within one clock tick look alike to a cache.
    for (int i = 0; i < 40; ++i) {
        const QString first = QString::number(100 + i);
        const QString second = QString::number(500 + i);
        saveConfiguration(2, second);
        QCOMPARE(swapRelayBoxSettings(2, 1).names[0],
                 i == 0 ? QStringLiteral("One") : QString::number(99 + i));
        saveConfiguration(1, first);
        QCOMPARE(swapRelayBoxSettings(1, 2).names[0], second);
        QCOMPARE(CSettings().relayBoxId, 2);
    }
}

void TestSettings::troubleLosesNoConfiguration_data()
{
    QTest::addColumn<QByteArray>("keptFile");
    QTest::addColumn<QString>("name");
    QTest::newRow("kept file names another box")
        << QByteArray("[General]\nrelayBoxId=9\nNames1=Kept\n") << "Kept";
    QTest::newRow("kept file is garbage") << QByteArray("\x01\xFF[[=\n\x80") << "Antena1";
    QTest::newRow("kept file cannot be read") << QByteArray() << "Beam";
}

void TestSettings::troubleLosesNoConfiguration()
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

void TestSettings::readOnlyFolderKeepsTheConfiguration()
{
    saveConfiguration(1, QStringLiteral("Beam"));
    const QString folder = QCoreApplication::applicationDirPath();
    const QFile::Permissions permissions = QFile::permissions(folder);
    bool isRoot = false;
#ifdef Q_OS_UNIX
    isRoot = geteuid() == 0;
#endif
    // Nobody forbids root to write, but not even root copies a file over a directory.
    if (isRoot)
        QVERIFY(QDir().mkpath(CSettings::relayBoxFilePath(1)));
    else
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    const QByteArray before = read(CSettings::settingsFilePath());
    const int id = swapRelayBoxSettings(1, 2).relayBoxId;
    const QByteArray after = read(CSettings::settingsFilePath());
    QFile::setPermissions(folder, permissions);
    QCOMPARE(id, 2);
    QCOMPARE(after, before);
}

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
